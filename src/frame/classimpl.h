// Definitions of a data class's members, each one line that forwards to the
// frame with the class's descriptor and the field's row. Used in the class's
// generated source file, after its field table kFields:
//
//     HALVANE_CLASS_DEFINITION(ModeManager, 0xC37A4ADF, kFields, nullptr, nullptr)
//     HALVANE_ENUM_ACCESSORS(ModeManager, RunningState)
//
// Each accessor finds its row by the field's name at compile time and checks
// that the row has the kind (and, for nested objects and lists, the class)
// that the accessor serves; the class definition checks the table as a whole.
#ifndef HALVANE_FRAME_CLASSIMPL_H
#define HALVANE_FRAME_CLASSIMPL_H

#include "dataclass.h"
#include "frame.h"

#include <QtCore/QCoreApplication>

#include <new>
#include <utility>
#include <type_traits>

namespace HALVANE {
namespace frame {

/*! The type-erased operations of data class X and of QVector<X>. */
template <class X>
struct OpsImpl {
    static_assert(sizeof(X) == kObjectSize, "a data class is the object base plus one pointer");
    using List = QVector<X>;

    static void construct(void *at) { new (at) X(); }
    static void copy(void *at, const void *from) { new (at) X(*static_cast<const X *>(from)); }
    static void destroy(void *at) { static_cast<X *>(at)->~X(); }
    static void assign(void *to, const void *from) { *static_cast<X *>(to) = *static_cast<const X *>(from); }
    static QUILLET::IQuilletObject *base(void *object) { return static_cast<X *>(object); }
    static Payload **payload(void *object) { return &static_cast<X *>(object)->d; }
    static void listConstruct(void *at) { new (at) List(); }
    static void listCopy(void *at, const void *from) { new (at) List(*static_cast<const List *>(from)); }
    static void listDestroy(void *at) { static_cast<List *>(at)->~List(); }
    static void listAssign(void *to, const void *from) { *static_cast<List *>(to) = *static_cast<const List *>(from); }
    static int listSize(const void *list) { return int(static_cast<const List *>(list)->size()); }
    static void *listAt(void *list, int i) { return &(*static_cast<List *>(list))[i]; }
    static const void *listAtConst(const void *list, int i) { return &static_cast<const List *>(list)->at(i); }
    static void listAppend(void *list, const void *item) { static_cast<List *>(list)->append(*static_cast<const X *>(item)); }
    static void listAppendMove(void *list, void *item) { static_cast<List *>(list)->append(std::move(*static_cast<X *>(item))); }
    static void listClear(void *list) { static_cast<List *>(list)->clear(); }
    static void listReserve(void *list, int size) { static_cast<List *>(list)->reserve(size); }

    static QUILLET::IQuilletObject *create() { return new X(); }
    static void rawWrite(const QUILLET::IQuilletObject *object, QDataStream &stream)
    {
        static_cast<const X *>(object)->GetVersionSpecificBinaryWithoutValidation(stream);
    }
    static void rawRead(QUILLET::IQuilletObject *object, QDataStream &stream)
    {
        static_cast<X *>(object)->SetVersionSpecificBinaryWithoutValidation(stream);
    }

    static constexpr ObjectOps make(const ClassDescriptor *desc)
    {
        return ObjectOps{desc, &construct, &copy, &destroy, &assign, &base, &payload,
                         &listConstruct, &listCopy, &listDestroy, &listAssign, &listSize,
                         &listAt, &listAtConst, &listAppend, &listAppendMove, &listClear, &listReserve,
                         &create, &rawWrite, &rawRead};
    }
};

/*! The operations of the item class X of a nested or list field, for its row. */
template <class X>
const ObjectOps &opsOf()
{
    return halvaneOps(static_cast<const X *>(nullptr));
}

template <class T> T defaultOf(const FieldDef &f);
template <> inline bool defaultOf<bool>(const FieldDef &f) { return f.initInt != 0; }
template <> inline int defaultOf<int>(const FieldDef &f) { return int(f.initInt); }
template <> inline qint64 defaultOf<qint64>(const FieldDef &f) { return f.initInt; }
template <> inline double defaultOf<double>(const FieldDef &f) { return f.initReal; }
template <> inline float defaultOf<float>(const FieldDef &f) { return float(f.initReal); }
template <> inline qint8 defaultOf<qint8>(const FieldDef &f) { return qint8(f.initInt); }

} // namespace frame
} // namespace HALVANE

#define HALVANE_OBJ_ (::HALVANE::frame::Obj{&kDescriptor, &d, this})
#define HALVANE_INDEX_(F) (std::integral_constant<int, ::HALVANE::frame::fieldIndex(kFields, #F)>::value)
/*! The row of field F has kind K: an accessor of another kind does not compile. */
#define HALVANE_EXPECT_KIND_(F, K)                                                                \
    static_assert(kFields[HALVANE_INDEX_(F)].kind == ::HALVANE::frame::Kind::K,                    \
                  "the row of field " #F " is not of kind " #K);
/*! The row of field F names the item class T. */
#define HALVANE_EXPECT_CLASS_(F, T)                                                                 \
    static_assert(kFields[HALVANE_INDEX_(F)].itemType == &::HALVANE::frame::ItemTypeTag<T>::tag,       \
                  "the row of field " #F " does not name the class " #T);
#define HALVANE_ROW_(I) (kDescriptor.fields[I])

/*! The class's descriptor and operations, and the members every data class has. */
#define HALVANE_CLASS_DEFINITION(X, ID, FIELDS, HOOKS, ORDER) HALVANE_CLASS_DEFINITION_(X, ID, FIELDS, HOOKS, ORDER, nullptr)
/*! As HALVANE_CLASS_DEFINITION, for a versioned document class; VERSION is
    its VersionDef. The class adds HALVANE_VERSION_ACCESSORS. */
#define HALVANE_VERSIONED_CLASS_DEFINITION(X, ID, FIELDS, HOOKS, ORDER, VERSION)                    \
    static_assert(::HALVANE::frame::tagOfNoField(VERSION.tag, FIELDS), "the version of " #X " has the tag of a field"); \
    HALVANE_CLASS_DEFINITION_(X, ID, FIELDS, HOOKS, ORDER, &VERSION)
#define HALVANE_CLASS_DEFINITION_(X, ID, FIELDS, HOOKS, ORDER, VERSION)                                \
    static_assert(::HALVANE::frame::uniqueTags(FIELDS), "two fields of " #X " have the same tag");      \
    static_assert(::HALVANE::frame::uniqueElements(FIELDS), "two fields of " #X " have the same element name"); \
    static_assert(::HALVANE::frame::uniqueNames(FIELDS), "two fields of " #X " have the same name");    \
    static_assert(::HALVANE::frame::isOrderOf(ORDER, FIELDS),                                           \
                  "the tagged order of " #X " is not a permutation of its fields");                     \
    namespace {                                                                                      \
    const ::HALVANE::frame::ClassDescriptor kDescriptor(#X, ID, FIELDS,                              \
                                                        int(sizeof(FIELDS) / sizeof(FIELDS[0])),     \
                                                        HOOKS, ::HALVANE::frame::orderPointer(ORDER), VERSION); \
    constexpr ::HALVANE::frame::ObjectOps kOps = ::HALVANE::frame::OpsImpl<X>::make(&kDescriptor);   \
    const ::HALVANE::frame::Registrar kRegistrar(&kOps);                                             \
    }                                                                                                \
    const ::HALVANE::frame::ObjectOps &halvaneOps(const X *) { return kOps; }                        \
    const qint64 X::id = qint64(quint32(ID));                                                        \
    /* The object's name is the class's name (DefaultObjectName) until set otherwise. */             \
    X::X() { m_objectType = QUILLET::ObjectTypes(quint32(ID)); }                                     \
    X::X(const X &other) : QUILLET::IQuilletObject(other.GetObjectType()), d(other.d)               \
    {                                                                                                \
        ::HALVANE::frame::retain(d);                                                                 \
        m_objectType = QUILLET::ObjectTypes(quint32(ID));                                            \
        X::SetValidate(other.GetValidate());                                                         \
    }                                                                                                \
    X::X(X &&other) noexcept : QUILLET::IQuilletObject(other.GetObjectType()), d(other.d)           \
    {                                                                                                \
        other.d = nullptr;                                                                           \
        m_objectType = QUILLET::ObjectTypes(quint32(ID));                                            \
        IQuilletObject::SetValidate(other.GetValidate());                                            \
    }                                                                                                \
    X &X::operator=(const X &other)                                                                  \
    {                                                                                                \
        ::HALVANE::frame::assign(kDescriptor, d, other.d);                                           \
        return *this;                                                                                \
    }                                                                                                \
    X &X::operator=(X &&other) noexcept                                                              \
    {                                                                                                \
        if (this != &other) {                                                                        \
            ::HALVANE::frame::release(kDescriptor, d);                                               \
            d = other.d;                                                                             \
            other.d = nullptr;                                                                       \
        }                                                                                            \
        return *this;                                                                                \
    }                                                                                                \
    X::~X() { ::HALVANE::frame::release(kDescriptor, d); }                                           \
    bool X::operator==(const X &other) const                                                         \
    {                                                                                                \
        return ::HALVANE::frame::equals(HALVANE_OBJ_, ::HALVANE::frame::Obj{&kDescriptor, &other.d, &other}); \
    }                                                                                                \
    bool X::HasData() const { return ::HALVANE::frame::hasData(HALVANE_OBJ_); }                      \
    bool X::AnyData() const { return ::HALVANE::frame::anyData(HALVANE_OBJ_); }                      \
    void X::Reset() { ::HALVANE::frame::reset(HALVANE_OBJ_); }                                       \
    void X::ResetToDefault() { ::HALVANE::frame::resetToDefault(HALVANE_OBJ_); }                     \
    void X::Check() const { Check(false); }                                                          \
    void X::Check(bool recursive) const { ::HALVANE::frame::check(HALVANE_OBJ_, recursive); }        \
    qint64 X::GetId() { return id; }                                                                 \
    QString X::GetStaticObjectName() { return QStringLiteral(#X); }                                  \
    const QString &X::DefaultObjectName() const                                                      \
    {                                                                                                \
        static const QString name = GetStaticObjectName();                                           \
        return name;                                                                                 \
    }                                                                                                \
    void X::SetObjectType(QUILLET::ObjectTypes) {}                                                   \
    void X::SetValidate(bool validate) const                                                         \
    {                                                                                                \
        IQuilletObject::SetValidate(validate);                                                       \
        ::HALVANE::frame::setValidate(HALVANE_OBJ_, validate);                                       \
    }                                                                                                \
    void X::SetLogger(std::shared_ptr<QUILLET::Logger> logger) const                                 \
    {                                                                                                \
        IQuilletObject::SetLogger(logger);                                                           \
        ::HALVANE::frame::setLogger(HALVANE_OBJ_, logger);                                           \
    }                                                                                                \
    void X::GetXml(QXmlStreamWriter &writer) const { ::HALVANE::frame::getXml(HALVANE_OBJ_, writer); } \
    void X::ProcessXml(QXmlStreamReader &reader) { ::HALVANE::frame::processXml(HALVANE_OBJ_, reader); } \
    void X::ProcessXmlStartElement(QXmlStreamReader &reader)                                         \
    {                                                                                                \
        ::HALVANE::frame::processXmlStartElement(HALVANE_OBJ_, reader);                              \
    }                                                                                                \
    bool X::GetBinary(QDataStream &stream, int tag, bool writeTag) const                             \
    {                                                                                                \
        return ::HALVANE::frame::getBinary(HALVANE_OBJ_, stream, tag, writeTag);                     \
    }                                                                                                \
    void X::SetBinary(QDataStream &stream, int length)                                               \
    {                                                                                                \
        ::HALVANE::frame::setBinary(HALVANE_OBJ_, stream, length);                                   \
    }                                                                                                \
    void X::GetVersionSpecificBinaryWithoutValidation(QDataStream &stream) const                     \
    {                                                                                                \
        ::HALVANE::frame::writeRaw(HALVANE_OBJ_, stream);                                            \
    }                                                                                                \
    void X::SetVersionSpecificBinaryWithoutValidation(QDataStream &stream)                           \
    {                                                                                                \
        ::HALVANE::frame::readRaw(HALVANE_OBJ_, stream);                                             \
    }                                                                                                \
    void X::InitData() const { ::HALVANE::frame::initData(HALVANE_OBJ_); }                           \
    void X::ConstNoClearReset() const { ::HALVANE::frame::constNoClearReset(HALVANE_OBJ_); }

/*! GetVersion and GetInitialVersionLoaded of a versioned document class. */
#define HALVANE_VERSION_ACCESSORS(X)                                                                     \
    const QString &X::GetVersion() const { return ::HALVANE::frame::currentVersion(HALVANE_OBJ_); }     \
    const QString &X::GetInitialVersionLoaded() const { return ::HALVANE::frame::loadedVersion(HALVANE_OBJ_); }

#define HALVANE_COMMON_ACCESSORS_(X, F, I)                                             \
    bool X::Is##F##Set() const { return ::HALVANE::frame::isSet(HALVANE_OBJ_, I); }    \
    void X::Reset##F() { ::HALVANE::frame::resetField(HALVANE_OBJ_, I); }

#define HALVANE_VALUE_GET_SET_(X, T, F, I)                                                        \
    T X::Get##F() const { return *static_cast<const T *>(::HALVANE::frame::valueOf(HALVANE_OBJ_, I)); } \
    void X::Set##F(T value) { ::HALVANE::frame::setValue(HALVANE_OBJ_, I, &value); }

#define HALVANE_BOOL_ACCESSORS(X, F) HALVANE_EXPECT_KIND_(F, Bool) HALVANE_BOOL_ACCESSORS_AT_(X, F, HALVANE_INDEX_(F))
#define HALVANE_BOOL_ACCESSORS_AT_(X, F, I)                                       \
    HALVANE_COMMON_ACCESSORS_(X, F, I)                                        \
    HALVANE_VALUE_GET_SET_(X, bool, F, I)                                     \
    bool X::GetDefault##F() const { return ::HALVANE::frame::defaultOf<bool>(kFields[I]); }

#define HALVANE_NUMBER_ACCESSORS_(X, T, F, I)                                               \
    HALVANE_COMMON_ACCESSORS_(X, F, I)                                                      \
    HALVANE_VALUE_GET_SET_(X, T, F, I)                                                      \
    T X::GetDefault##F() const { return ::HALVANE::frame::defaultOf<T>(kFields[I]); }       \
    bool X::IsValid##F(const T &value) const                                                \
    {                                                                                       \
        return ::HALVANE::frame::isValidValue(HALVANE_ROW_(I), &value);                     \
    }

#define HALVANE_INT_ACCESSORS(X, F) HALVANE_EXPECT_KIND_(F, Int) HALVANE_NUMBER_ACCESSORS_(X, int, F, HALVANE_INDEX_(F))
#define HALVANE_INT64_ACCESSORS(X, F) HALVANE_EXPECT_KIND_(F, Int64) HALVANE_NUMBER_ACCESSORS_(X, qint64, F, HALVANE_INDEX_(F))
#define HALVANE_DOUBLE_ACCESSORS(X, F) HALVANE_EXPECT_KIND_(F, Double) HALVANE_NUMBER_ACCESSORS_(X, double, F, HALVANE_INDEX_(F))
#define HALVANE_FLOAT_ACCESSORS(X, F) HALVANE_EXPECT_KIND_(F, Float) HALVANE_NUMBER_ACCESSORS_(X, float, F, HALVANE_INDEX_(F))

#define HALVANE_STRING_ACCESSORS(X, F) HALVANE_EXPECT_KIND_(F, String) HALVANE_STRING_ACCESSORS_AT_(X, F, HALVANE_INDEX_(F))
#define HALVANE_STRING_ACCESSORS_AT_(X, F, I)                                                         \
    HALVANE_COMMON_ACCESSORS_(X, F, I)                                                            \
    QString X::Get##F() { return *static_cast<const QString *>(::HALVANE::frame::valueOf(HALVANE_OBJ_, I)); } \
    void X::Set##F(QString value) { ::HALVANE::frame::setValue(HALVANE_OBJ_, I, &value); }      \
    QString X::GetDefault##F() const { return HALVANE_ROW_(I).initString; }                      \
    bool X::IsValid##F(const QString &value) const { return !value.isNull(); }

// Date-time, nested and list fields: const and mutable references.
#define HALVANE_REFERENCE_ACCESSORS_(X, T, F, I)                                                     \
    HALVANE_COMMON_ACCESSORS_(X, F, I)                                                               \
    auto X::Get##F() const->const T & { return *static_cast<const T *>(::HALVANE::frame::valueOf(HALVANE_OBJ_, I)); } \
    auto X::Get##F()->T & { return *static_cast<T *>(::HALVANE::frame::mutableValueOf(HALVANE_OBJ_, I)); } \
    void X::Set##F(const T &value) { ::HALVANE::frame::setValue(HALVANE_OBJ_, I, &value); }

#define HALVANE_DATETIME_ACCESSORS(X, F) HALVANE_EXPECT_KIND_(F, DateTime) HALVANE_DATETIME_ACCESSORS_AT_(X, F, HALVANE_INDEX_(F))
#define HALVANE_DATETIME_ACCESSORS_AT_(X, F, I)                           \
    HALVANE_REFERENCE_ACCESSORS_(X, QDateTime, F, I)                  \
    QDateTime X::GetDefault##F() const { return QDateTime(); }        \
    bool X::IsValid##F(const QDateTime &) const { return true; }

#define HALVANE_NESTED_ACCESSORS(X, T, F) \
    HALVANE_EXPECT_KIND_(F, Nested) HALVANE_EXPECT_CLASS_(F, T) HALVANE_NESTED_ACCESSORS_AT_(X, T, F, HALVANE_INDEX_(F))
#define HALVANE_NESTED_ACCESSORS_AT_(X, T, F, I)   \
    HALVANE_REFERENCE_ACCESSORS_(X, T, F, I)   \
    bool X::IsValid##F(const T &) const { return true; }

#define HALVANE_LIST_ACCESSORS_(X, T, F, I)                                                             \
    HALVANE_REFERENCE_ACCESSORS_(X, QVector<T>, F, I)                                                   \
    void X::Append##F(const T &item) { ::HALVANE::frame::append(HALVANE_OBJ_, I, &item); }            \
    bool X::IsValid##F(const T &item) const { return ::HALVANE::frame::isValidItem(HALVANE_ROW_(I), &item); } \
    bool X::IsValid##F(const QVector<T> &items) const                                                  \
    {                                                                                                   \
        return ::HALVANE::frame::isValidList(HALVANE_ROW_(I), &items);                                  \
    }

#define HALVANE_OBJECT_LIST_ACCESSORS(X, T, F)                                                  \
    HALVANE_EXPECT_KIND_(F, ObjectList) HALVANE_EXPECT_CLASS_(F, T)                             \
    HALVANE_LIST_ACCESSORS_(X, T, F, HALVANE_INDEX_(F))                                         \
    void X::Append##F(T &&item) { ::HALVANE::frame::append(HALVANE_OBJ_, HALVANE_INDEX_(F), &item, true); }
#define HALVANE_STRING_LIST_ACCESSORS(X, F) \
    HALVANE_EXPECT_KIND_(F, StringList) HALVANE_LIST_ACCESSORS_(X, QString, F, HALVANE_INDEX_(F)) \
    QString X::GetDefault##F() const { return QString(); }

#define HALVANE_ENUM_CONVERTER_DEFS_(X, F, I)                                                      \
    QString X::F##ToName(const F &value) { return kFields[I].table->text(0, value); }              \
    X::F X::NameTo##F(const QString &name) { return kFields[I].table->find(0, name); }

#define HALVANE_ENUM_ACCESSORS(X, F) HALVANE_EXPECT_KIND_(F, Enum) HALVANE_ENUM_ACCESSORS_AT_(X, F, HALVANE_INDEX_(F))
#define HALVANE_ENUM_ACCESSORS_AT_(X, F, I)                                                             \
    HALVANE_COMMON_ACCESSORS_(X, F, I)                                                              \
    const X::F &X::Get##F() const { return *static_cast<const F *>(::HALVANE::frame::valueOf(HALVANE_OBJ_, I)); } \
    void X::Set##F(F value) { ::HALVANE::frame::setValue(HALVANE_OBJ_, I, &value); }               \
    X::F X::GetDefault##F() const { return ::HALVANE::frame::defaultOf<qint8>(kFields[I]); }        \
    bool X::IsValid##F(const F &value) const { return kFields[I].table->isValid(value); }          \
    X::F X::GetInvalid##F() const { return F(-1); }                                                 \
    QString X::Get##F##AsString() const { return ::HALVANE::frame::enumAsString(HALVANE_OBJ_, I); } \
    HALVANE_ENUM_CONVERTER_DEFS_(X, F, I)

#define HALVANE_ENUM_LIST_ACCESSORS(X, F) HALVANE_EXPECT_KIND_(F, EnumList) HALVANE_ENUM_LIST_ACCESSORS_AT_(X, F, HALVANE_INDEX_(F))
#define HALVANE_ENUM_LIST_ACCESSORS_AT_(X, F, I)                                                  \
    HALVANE_LIST_ACCESSORS_(X, F, F, I)                                                       \
    X::F X::GetDefault##F() const { return ::HALVANE::frame::defaultOf<qint8>(kFields[I]); }  \
    X::F X::GetInvalid##F() const { return F(-1); }                                           \
    HALVANE_ENUM_CONVERTER_DEFS_(X, F, I)

/*! A one-column table: its names and their translations. */
#define HALVANE_ENUM_NAMES_ACCESSORS(X, F) HALVANE_ENUM_NAMES_ACCESSORS_AT_(X, F, HALVANE_INDEX_(F))
#define HALVANE_ENUM_NAMES_ACCESSORS_AT_(X, F, I)                                   \
    QStringList X::Get##F##s() { return kFields[I].table->names(); }           \
    QStringList X::GetGUI##F##s() { return ::HALVANE::frame::guiNames(*kFields[I].table); }

/*! A table of rows: a copy of the rows, shared until the caller writes to it.
    The members of Row follow in column order. */
#define HALVANE_ENUM_ROWS_ACCESSORS(X, F, Row, ...)                                                 \
    QList<X::Row> X::Get##F##s()                                                                  \
    {                                                                                             \
        static const QList<Row> rows = ::HALVANE::frame::rowsOf<Row>(*kFields[HALVANE_INDEX_(F)].table, __VA_ARGS__); \
        return rows;                                                                              \
    }

/*! Column COL (counted from Name as 0) of the table of field F. */
#define HALVANE_ENUM_COLUMN_ACCESSORS(X, F, C, COL) HALVANE_ENUM_COLUMN_ACCESSORS_AT_(X, F, C, HALVANE_INDEX_(F), COL)
#define HALVANE_ENUM_COLUMN_ACCESSORS_AT_(X, F, C, I, COL)                                   \
    QString X::F##To##C(const F &value) { return kFields[I].table->text(COL, value); }   \
    X::F X::C##To##F(const QString &text) { return kFields[I].table->find(COL, text); }

#define HALVANE_ENUM_HELPID_ACCESSORS(X, F) HALVANE_ENUM_HELPID_ACCESSORS_AT_(X, F, HALVANE_INDEX_(F))
#define HALVANE_ENUM_HELPID_ACCESSORS_AT_(X, F, I)                                       \
    int X::F##ToHelpid(const F &value) const { return kFields[I].table->helpid(value); } \
    X::F X::HelpidTo##F(const int &helpid) { return kFields[I].table->findHelpid(helpid); }

/*! tr and trUtf8 of class X: QCoreApplication::translate in the context
    "HALVANE::X". */
#define HALVANE_TRANSLATE_DEFINITION(X)                                                    \
    QString X::tr(const char *text, const char *disambiguation, int n)                    \
    {                                                                                      \
        return QCoreApplication::translate("HALVANE::" #X, text, disambiguation, n);       \
    }                                                                                      \
    QString X::trUtf8(const char *text, const char *disambiguation, int n)                \
    {                                                                                      \
        return tr(text, disambiguation, n);                                                \
    }

#endif
