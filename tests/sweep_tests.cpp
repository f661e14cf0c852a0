// One sweep over every class of the registry, so that a class added later is
// covered without new test code: its example document through the three
// forms and back, a copy changed without touching the original, and every
// truncated prefix of both binary forms ending in the form's own refusal.
#include "support.h"

#include <QtCore/QBuffer>
#include <QtCore/QSet>

#include <memory>

using namespace HALVANE;

namespace {

using Object = std::unique_ptr<QUILLET::IQuilletObject>;

// Every registered class, the classes of the tests included.
QVector<const schema::Class *> swept()
{
    return schema::classes();
}

Object example(const schema::Class &c)
{
    Object o = c.create();
    o->SetValidate(true);
    o->SetXmlString(schema::exampleXml(c));
    return o;
}

QByteArray rawOf(const schema::Class &c, const QUILLET::IQuilletObject &o)
{
    return test::written([&](QDataStream &s) { c.writeRaw(o, s); });
}

// The three forms as one text: XML, the binary block, the raw form.
std::string forms(const schema::Class &c, const QUILLET::IQuilletObject &o)
{
    return o.GetXmlString().toStdString() + "|" + test::hex(o.GetBinaryRepresentationAsQByteArray()) + "|"
           + test::hex(rawOf(c, o));
}

// The names of the class and of every class it holds, nested or in lists.
QSet<QString> heldNames(const schema::Class &c)
{
    QSet<QString> names{c.name};
    for (const schema::Field &f : c.fields) {
        if (!f.itemClass.isEmpty() && !names.contains(f.itemClass))
            names.unite(heldNames(*schema::findClass(f.itemClass)));
    }
    return names;
}

// A length error of the class or of an object it holds. A cut record still
// reaches its setter or append, as the stream gives it (0, an empty text, an
// item without data): with validation on, the setter's refusal may come
// before the length error.
bool isRefusal(const QString &message, const QSet<QString> &names)
{
    for (const QString &name : names) {
        if (message == test::lengthError(name))
            return true;
    }
    return message.startsWith(QLatin1String("refused: "));
}

// Reads the first \a size bytes of the raw form; answers the stream's status.
QDataStream::Status readRawPrefix(const schema::Class &c, const QByteArray &bytes, int size)
{
    Object o = c.create();
    QDataStream in(bytes.left(size));
    c.readRaw(*o, in);
    return in.status();
}

// Reads into a new object of the class with validation on; answers the
// message of the refusal, or "(read)".
QString readPrefix(const schema::Class &c, const std::function<void(QUILLET::IQuilletObject &)> &read)
{
    Object o = c.create();
    o->SetValidate(true);
    try {
        read(*o);
    } catch (const BinaryParsingException &e) {
        return e.GetMessage();
    } catch (const OutOfRangeException &e) {
        return QStringLiteral("refused: ") + e.GetMessage();
    } catch (const IncompleteDefinitionException &e) {
        return QStringLiteral("refused: ") + e.GetMessage();
    }
    return QStringLiteral("(read)");
}

// The first \a size bytes of a binary block.
QString readBlockPrefix(const schema::Class &c, const QByteArray &block, int size)
{
    return readPrefix(c, [&](QUILLET::IQuilletObject &o) { o.SetBinaryRepresentation(block.left(size)); });
}

// The first \a size bytes of the tagged form, object length first, from a
// stream.
QString readTaggedPrefix(const schema::Class &c, const QByteArray &tagged, int size)
{
    return readPrefix(c, [&](QUILLET::IQuilletObject &o) {
        QByteArray bytes = tagged.left(size);
        QBuffer buffer(&bytes);
        buffer.open(QIODevice::ReadOnly);
        QDataStream in(&buffer);
        qint32 length = 0;
        in >> length;
        o.SetBinary(in, length);
    });
}

} // namespace

TEST(Sweep, EveryClassHasAnExampleThatDiffersFromAnEmptyObject)
{
    ASSERT_GE(swept().size(), 9);
    for (const schema::Class *c : swept()) {
        const Object original = example(*c);
        EXPECT_TRUE(original->HasData()) << c->name.toStdString();
        EXPECT_NO_THROW(original->Check(true)) << c->name.toStdString();
        EXPECT_TRUE(c->equal(*original, *example(*c))) << c->name.toStdString();
        EXPECT_FALSE(c->equal(*original, *c->create())) << c->name.toStdString();
        // Objects of another class are never equal, and not copied.
        const schema::Class *other = swept().first() == c ? swept().last() : swept().first();
        EXPECT_FALSE(c->equal(*original, *other->create())) << c->name.toStdString();
        EXPECT_FALSE(c->equal(*other->create(), *original)) << c->name.toStdString();
        EXPECT_EQ(c->copy(*other->create()), nullptr) << c->name.toStdString();
    }
}

TEST(Sweep, EveryClassRoundTripsThroughTheThreeForms)
{
    for (const schema::Class *c : swept()) {
        SCOPED_TRACE(c->name.toStdString());
        const Object original = example(*c);
        const QString xml = original->GetXmlString();
        const QByteArray block = original->GetBinaryRepresentationAsQByteArray();
        const QByteArray tagged = test::tagged(*original);
        const QByteArray raw = rawOf(*c, *original);

        Object fromXml = c->create();
        fromXml->SetValidate(true);
        fromXml->SetXmlString(xml);
        EXPECT_TRUE(c->equal(*fromXml, *original));
        EXPECT_EQ(fromXml->GetXmlString(), xml);

        Object fromBlock = c->create();
        fromBlock->SetValidate(true);
        fromBlock->SetBinaryRepresentation(block);
        EXPECT_TRUE(c->equal(*fromBlock, *original));
        EXPECT_EQ(test::hex(fromBlock->GetBinaryRepresentationAsQByteArray()), test::hex(block));

        Object fromTagged = c->create();
        fromTagged->SetValidate(true);
        test::readTagged(*fromTagged, tagged);
        EXPECT_TRUE(c->equal(*fromTagged, *original));
        EXPECT_EQ(test::hex(test::tagged(*fromTagged)), test::hex(tagged));

        Object fromRaw = c->create();
        QDataStream in(raw);
        c->readRaw(*fromRaw, in);
        EXPECT_EQ(in.status(), QDataStream::Ok);
        EXPECT_TRUE(in.atEnd());
        EXPECT_TRUE(c->equal(*fromRaw, *original));
        EXPECT_EQ(test::hex(rawOf(*c, *fromRaw)), test::hex(raw));

        // Each form read from another: XML -> tagged -> raw -> XML.
        Object chain = c->create();
        chain->SetBinaryRepresentation(fromXml->GetBinaryRepresentationAsQByteArray());
        Object last = c->create();
        QDataStream chainIn(rawOf(*c, *chain));
        c->readRaw(*last, chainIn);
        EXPECT_EQ(last->GetXmlString(), xml);
    }
}

TEST(Sweep, EveryClassCopyChangesWithoutTouchingTheOriginal)
{
    for (const schema::Class *c : swept()) {
        SCOPED_TRACE(c->name.toStdString());
        const Object original = example(*c);
        const std::string before = forms(*c, *original);

        Object reset = c->copy(*original);
        ASSERT_NE(reset, nullptr);
        EXPECT_TRUE(reset->GetValidate());
        EXPECT_TRUE(c->equal(*reset, *original));
        reset->Reset();
        EXPECT_FALSE(c->equal(*reset, *original));
        EXPECT_TRUE(c->equal(*reset, *c->create()));

        // Reading into a copy reads as into an object of its own: lists
        // grow by the items read, fields read again keep their values.
        Object reread = c->copy(*original);
        reread->SetXmlString(schema::exampleXml(*c));
        Object twice = example(*c);
        twice->SetXmlString(schema::exampleXml(*c));
        EXPECT_TRUE(c->equal(*reread, *twice));

        EXPECT_EQ(forms(*c, *original), before);
        EXPECT_TRUE(c->equal(*original, *example(*c)));
        // The copy of a copy, and the original, untouched by the copies' end.
        Object second = c->copy(*reread);
        reset.reset();
        reread.reset();
        EXPECT_TRUE(c->equal(*second, *twice));
        EXPECT_EQ(forms(*c, *original), before);
    }
}

TEST(Sweep, EveryTruncatedBinaryFormEndsInTheFormsRefusal)
{
    for (const schema::Class *c : swept()) {
        SCOPED_TRACE(c->name.toStdString());
        const Object original = example(*c);
        const QSet<QString> names = heldNames(*c);

        // The block: magic, class id and object length, then the records.
        // Every prefix ends in BinaryParsingException.
        const QByteArray block = original->GetBinaryRepresentationAsQByteArray();
        const QString badHeader = c->name + QStringLiteral(": not a binary representation (bad header)");
        const QString truncated = c->name + QStringLiteral(": binary representation is truncated");
        for (int size = 0; size < block.size(); ++size) {
            const QString message = readBlockPrefix(*c, block, size);
            if (size < 4)
                ASSERT_EQ(message, badHeader) << size;
            else if (size < 12)
                ASSERT_EQ(message, truncated) << size;
            else
                ASSERT_TRUE(isRefusal(message, names)) << size << ": " << message.toStdString();
        }
        EXPECT_EQ(readBlockPrefix(*c, block, block.size()), QStringLiteral("(read)"));

        // The tagged form on a caller's stream, object length first: the
        // length claims more than every prefix holds.
        const QByteArray tagged = test::tagged(*original);
        for (int size = 4; size < tagged.size(); ++size) {
            const QString message = readTaggedPrefix(*c, tagged, size);
            ASSERT_TRUE(isRefusal(message, names)) << size << ": " << message.toStdString();
        }
        EXPECT_EQ(readTaggedPrefix(*c, tagged, tagged.size()), QStringLiteral("(read)"));

        // The raw form raises nothing: the stream reads past its end.
        const QByteArray raw = rawOf(*c, *original);
        for (int size = 0; size < raw.size(); ++size)
            ASSERT_EQ(readRawPrefix(*c, raw, size), QDataStream::ReadPastEnd) << size;
        EXPECT_EQ(readRawPrefix(*c, raw, raw.size()), QDataStream::Ok);
    }
}
