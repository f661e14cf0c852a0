// halvane: looks into, checks, compares and converts the library's documents.
// Knows the classes only through the schema registry, so every class is
// covered. The commands and their options are in kCommands below; the parts
// live beside this file: document.cpp (files, forms, the tree of texts),
// strict.cpp, json.cpp, diff.cpp, dump.cpp and plot.cpp.
//
// FORMAT is xml, hvb (the binary block of GetBinaryRepresentation), hvr (the
// raw form behind a header naming the class) or json (the tool's own form);
// it follows from the file's extension unless given, and for standard input
// from its first bytes.
#include "document.h"
#include "dump.h"
#include "strict.h"

#include <halvane/halvane.h>

#include <halvane/frame/schema/schema.h>

#include <QtCore/QCoreApplication>

#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#ifdef HALVANE_PLOT
#include "plot.h"
#endif

using namespace HALVANE;
using namespace tool;

namespace {

struct Command {
    const char *name;
    const char *usage;   // the arguments
    const char *summary; // what it does
    const char *valued;  // its options that take a value, space-separated
    const char *flags;   // its options without a value
};

const Command kCommands[] = {
    {"convert", "IN OUT [--from FORMAT] [--to FORMAT] [--force]",
     "converts between the forms; refuses what validate refuses unless --force, and then writes what the library reads",
     "--from --to", "--force"},
    {"validate", "FILE... [--from FORMAT] [--lenient]",
     "reads with validation on and runs Check; unless --lenient also reports every value that reading changes or "
     "loses, as FILE:LINE:COLUMN (XML) or FILE: at byte N (binary forms); prints \"FILE: ok\"",
     "--from", "--lenient"},
    {"dump", "FILE [--raw-tags] [--offsets] [--from FORMAT]",
     "annotated tree of a tagged (hvb) or raw (hvr) document; --raw-tags without the field tables; --offsets puts "
     "each line's byte offset in front",
     "--from", "--raw-tags --offsets"},
    {"diff", "A B", "the fields that differ between two documents of one class, in any forms: \"PATH: a \u2192 b\"", "",
     ""},
    {"schema", "[CLASS] | --xsd", "the field table of a class, the list of classes, or an XML Schema of the XML form", "",
     "--xsd"},
    {"example", "CLASS [OUT] [--to FORMAT] [--count N]",
     "a fully populated, valid document; --count N puts N items in each list", "--to --count", ""},
    {"plot", "FILE [OUT] [--entry INDEX] [--csv] [--to svg|png|csv] [--from FORMAT]",
     "antenna patterns of an AntennaPatterns or AntennaMatrixConfiguration document as SVG, PNG or the points as CSV",
     "--entry --to --from", "--csv"},
    {"help", "[COMMAND]", "the usage of the tool or of one command", "", ""},
};

const char kExitCodes[] =
    "FORMAT: xml, hvb (binary block), hvr (raw form) or json; by default the file's extension, for standard\n"
    "input (\"-\") its first bytes. Options may be written --opt=value; \"--\" ends the options.\n"
    "Exit codes: 0 done, everything written and valid (diff: the documents are equal); 1 a document is\n"
    "invalid or a file cannot be read or written (diff: the documents differ); 2 a wrong command line\n"
    "(diff: also a document that cannot be read). Messages go to standard error, one line each.";

const Command *findCommand(const QString &name)
{
    for (const Command &c : kCommands) {
        if (name == QLatin1String(c.name))
            return &c;
    }
    return nullptr;
}

QString usageOf(const Command &c)
{
    return QStringLiteral("usage: halvane %1 %2\n  %3\n").arg(QLatin1String(c.name), QString::fromUtf8(c.usage),
                                                            QString::fromUtf8(c.summary));
}

QString usage()
{
    QString text = QStringLiteral("usage: halvane COMMAND [ARGS] | halvane --help | halvane --version\n");
    for (const Command &c : kCommands)
        text += QStringLiteral("  halvane %1 %2\n").arg(QLatin1String(c.name), QString::fromUtf8(c.usage));
    return text + QLatin1String(kExitCodes) + QLatin1Char('\n');
}

struct Options {
    QStringList args;
    QString from, to;
    bool rawTags = false, offsets = false, xsd = false, force = false, lenient = false, help = false;
    int count = -1;
};

bool listed(const char *list, const QString &option)
{
    return QString::fromLatin1(list).split(QLatin1Char(' '), Qt::SkipEmptyParts).contains(option);
}

// Options of one command, also as --opt=value; "--" ends them.
Options parse(const Command &command, const QStringList &argv)
{
    const QString name = QLatin1String(command.name);
    Options o;
    bool options = true;
    for (int i = 0; i < argv.size(); ++i) {
        QString a = argv[i];
        if (!options || a == QLatin1String("-") || !a.startsWith(QLatin1Char('-'))) {
            o.args.append(a);
            continue;
        }
        if (a == QLatin1String("--")) {
            options = false;
            continue;
        }
        if (a == QLatin1String("--help") || a == QLatin1String("-h")) {
            o.help = true;
            continue;
        }
        QString value;
        bool hasValue = false;
        const int eq = int(a.indexOf(QLatin1Char('=')));
        if (a.startsWith(QLatin1String("--")) && eq > 2) {
            value = a.mid(eq + 1);
            a = a.left(eq);
            hasValue = true;
        }
        if (listed(command.valued, a)) {
            if (!hasValue) {
                if (i + 1 >= argv.size())
                    throw UsageError{QStringLiteral("%1 needs a value").arg(a), name};
                value = argv[++i];
            }
            if (a == QLatin1String("--from"))
                o.from = value.toLower();
            else if (a == QLatin1String("--to"))
                o.to = value.toLower();
            else if (a == QLatin1String("--count")) {
                bool ok = false;
                o.count = value.toInt(&ok);
                if (!ok || o.count < 0)
                    throw UsageError{QStringLiteral("--count takes a number of items, not '%1'").arg(value), name};
            }
        } else if (listed(command.flags, a) && !hasValue) {
            o.rawTags |= a == QLatin1String("--raw-tags");
            o.offsets |= a == QLatin1String("--offsets");
            o.xsd |= a == QLatin1String("--xsd");
            o.force |= a == QLatin1String("--force");
            o.lenient |= a == QLatin1String("--lenient");
        } else {
            throw UsageError{QStringLiteral("unknown option '%1'").arg(argv[i]), name};
        }
    }
    return o;
}

const schema::Class *classNamed(const QString &name, const QString &command)
{
    const schema::Class *c = schema::findClass(name);
    if (!c)
        throw UsageError{QStringLiteral("no class '%1' (halvane schema lists them)").arg(name), command};
    return c;
}

// One document, checked as validate checks it; returns the faults, and when
// there are none the document as read with validation on.
QStringList faultsOf(const Input &in, bool strict, Document *read = nullptr)
{
    if (strict) {
        const QStringList problems = strictProblems(in);
        if (!problems.isEmpty())
            return problems;
    }
    try {
        // The faults of lengths, headers and syntax come first, as plain
        // reading finds them; then the setters' and Check's. A document that
        // reads with validation on reads without, so plain reading is left
        // to those that do not.
        Document doc;
        try {
            doc = load(in, true);
        } catch (const DocumentError &) {
            load(in, false);
            throw;
        }
        doc.object->Check();
        if (read)
            *read = std::move(doc);
    } catch (const DocumentError &e) {
        return e.lines;
    } catch (const QuilletRootException &e) {
        return QStringList{in.file + QStringLiteral(": ") + e.GetMessage()};
    }
    return QStringList();
}

int run(const Command &command, const Options &o)
{
    const QString name = QLatin1String(command.name);
    if (name == QLatin1String("convert")) {
        if (o.args.size() != 2)
            throw UsageError{QStringLiteral("convert takes IN and OUT"), name};
        const QString in = o.args[0], out = o.args[1];
        const QString to = formatOf(out, o.to);
        if (in != QLatin1String("-"))
            formatOf(in, o.from);
        const Input input = openInput(in, o.from);
        Document doc;
        if (o.force) {
            doc = load(input, false);
        } else {
            // What validate accepts is written as plain reading reads it.
            const QStringList faults = faultsOf(input, true, &doc);
            if (!faults.isEmpty())
                throw DocumentError(faults);
            doc.object->SetValidate(false);
        }
        writeOutput(out, [&doc, &to](QIODevice &device) { save(doc, to, device); });
        return 0;
    }
    if (name == QLatin1String("validate")) {
        if (o.args.isEmpty())
            throw UsageError{QStringLiteral("validate takes one or more files"), name};
        for (const QString &file : o.args) {
            if (file != QLatin1String("-"))
                formatOf(file, o.from);
        }
        int bad = 0;
        for (const QString &file : o.args) {
            QStringList faults;
            try {
                faults = faultsOf(openInput(file, o.from), !o.lenient);
            } catch (const DocumentError &e) {
                faults = e.lines;
            }
            for (const QString &line : faults)
                printErr(line);
            if (faults.isEmpty())
                printOut(file + QStringLiteral(": ok\n"));
            bad += faults.isEmpty() ? 0 : 1;
        }
        return bad ? 1 : 0;
    }
    if (name == QLatin1String("dump")) {
        if (o.args.size() != 1)
            throw UsageError{QStringLiteral("dump takes one file"), name};
        const QString file = o.args[0];
        const QByteArray bytes = readInput(file);
        const QString format = o.rawTags ? QStringLiteral("hvb") : formatOf(file, o.from, &bytes);
        printOut(dump(file, bytes, format, o.rawTags, o.offsets));
        return 0;
    }
    if (name == QLatin1String("diff")) {
        if (o.args.size() != 2)
            throw UsageError{QStringLiteral("diff takes two documents"), name};
        Document docs[2];
        try {
            for (int i = 0; i < 2; ++i) {
                docs[i] = load(openInput(o.args[i], QString()), false);
            }
        } catch (const DocumentError &e) {
            for (const QString &line : e.lines)
                printErr(line);
            return 2;
        }
        if (docs[0].cls != docs[1].cls) {
            printOut(QStringLiteral("%1 \u2192 %2\n").arg(docs[0].cls->name, docs[1].cls->name));
            return 1;
        }
        if (docs[0].cls->equal(*docs[0].object, *docs[1].object))
            return 0;
        const QStringList lines = differences(treeOf(docs[0]), treeOf(docs[1]));
        for (const QString &line : lines)
            printOut(line + QLatin1Char('\n'));
        if (lines.isEmpty())
            printOut(QStringLiteral("the documents differ in values that their text forms show alike\n"));
        return 1;
    }
    if (name == QLatin1String("schema")) {
        if (o.xsd) {
            if (!o.args.isEmpty())
                throw UsageError{QStringLiteral("schema --xsd takes no class"), name};
            printOut(schema::xmlSchema());
            return 0;
        }
        if (o.args.isEmpty()) {
            for (const schema::Class *c : schema::classes())
                printOut(QStringLiteral("%1 %2%3\n")
                             .arg(c->name, tagText(c->id), c->document ? QStringLiteral(" document") : QString()));
            return 0;
        }
        if (o.args.size() > 1)
            throw UsageError{QStringLiteral("schema takes one class"), name};
        printOut(schema::describe(*classNamed(o.args[0], name)));
        return 0;
    }
    if (name == QLatin1String("example")) {
        if (o.args.isEmpty() || o.args.size() > 2)
            throw UsageError{QStringLiteral("example takes CLASS and an optional OUT"), name};
        const schema::Class *c = classNamed(o.args[0], name);
        const QString out = o.args.value(1, QStringLiteral("-"));
        const QString to = o.to.isEmpty() && out == QLatin1String("-") ? QStringLiteral("xml") : formatOf(out, o.to);
        const QString xml = o.count < 0 ? schema::exampleXml(*c) : schema::exampleXml(*c, o.count);
        const Document doc = load(c->name, xml.toUtf8(), QStringLiteral("xml"), true);
        doc.object->Check();
        writeOutput(out, [&doc, &to](QIODevice &device) { save(doc, to, device); });
        return 0;
    }
    if (name == QLatin1String("help")) {
        if (o.args.size() > 1)
            throw UsageError{QStringLiteral("help takes one command"), name};
        if (o.args.isEmpty()) {
            printOut(usage());
            return 0;
        }
        const Command *c = findCommand(o.args[0]);
        if (!c)
            throw UsageError{QStringLiteral("unknown command '%1'").arg(o.args[0]), QString()};
        printOut(usageOf(*c));
        return 0;
    }
    return 2; // every command of the table is handled above
}

// plot draws with Qt's GUI modules and makes its own application object; it
// takes its options as separate words.
int runPlot(int argc, char **argv)
{
#ifdef HALVANE_PLOT
    std::vector<std::string> words;
    bool options = true;
    for (int i = 0; i < argc; ++i) {
        const std::string a = argv[i];
        const std::size_t eq = a.find('=');
        if (i > 1 && options && a.rfind("--", 0) == 0 && eq != std::string::npos && eq > 2) {
            words.push_back(a.substr(0, eq));
            words.push_back(a.substr(eq + 1));
        } else if (i > 1 && options && a == "--") {
            options = false;
        } else {
            words.push_back(a);
        }
    }
    std::vector<char *> args;
    for (std::string &w : words)
        args.push_back(&w[0]);
    args.push_back(nullptr);
    int count = int(words.size());
    plot::ToolIo io;
    io.load = [](const QString &file, const QString &from) {
        try {
            return load(openInput(file, from), false).object;
        } catch (const UsageError &e) {
            throw plot::Failure{e.message, 2};
        } catch (const DocumentError &e) {
            throw plot::Failure{e.lines.join(QLatin1Char('\n')), 1};
        }
    };
    io.write = [](const QString &file, const QByteArray &bytes) {
        try {
            writeOutput(file, bytes);
        } catch (const DocumentError &e) {
            throw plot::Failure{e.lines.join(QLatin1Char('\n')), 1};
        }
    };
    const int code = plot::run(count, args.data(), io);
    QString message;
    if (!flushOut(&message)) {
        printErr(message);
        return 1;
    }
    return code;
#else
    Q_UNUSED(argc);
    Q_UNUSED(argv);
    printErr(QStringLiteral("halvane: plot is not built into this tool: it needs Qt's Gui and Svg modules"));
    return 2;
#endif
}

int finish(int code)
{
    QString message;
    if (!flushOut(&message)) {
        printErr(message);
        return code ? code : 1;
    }
    return code;
}

} // namespace

int main(int argc, char **argv)
{
    if (argc > 1 && std::strcmp(argv[1], "plot") == 0) {
        for (int i = 2; i < argc && std::strcmp(argv[i], "--") != 0; ++i) {
            if (std::strcmp(argv[i], "--help") == 0 || std::strcmp(argv[i], "-h") == 0) {
                std::fputs(usageOf(*findCommand(QStringLiteral("plot"))).toUtf8().constData(), stdout);
                return finish(0);
            }
        }
        return runPlot(argc, argv);
    }
    QCoreApplication app(argc, argv);
    QStringList args = app.arguments().mid(1);
    if (args.isEmpty()) {
        std::fputs(usage().toUtf8().constData(), stderr);
        return 2;
    }
    const QString first = args.takeFirst();
    const Command *current = nullptr;
    try {
        if (first == QLatin1String("--help") || first == QLatin1String("-h")) {
            printOut(usage());
            return finish(0);
        }
        if (first == QLatin1String("--version")) {
            printOut(QStringLiteral("halvane %1 (Qt %2)\n").arg(QLatin1String(HALVANE::libraryVersion()), QLatin1String(qVersion())));
            return finish(0);
        }
        const Command *command = findCommand(first);
        if (!command)
            throw UsageError{first.startsWith(QLatin1Char('-')) ? QStringLiteral("unknown option '%1'").arg(first)
                                                                : QStringLiteral("unknown command '%1'").arg(first),
                             QString()};
        current = command;
        const Options o = parse(*command, args);
        if (o.help) {
            printOut(usageOf(*command));
            return finish(0);
        }
        return finish(run(*command, o));
    } catch (const UsageError &e) {
        printErr(QStringLiteral("halvane: %1 (halvane --help shows the usage)").arg(e.message));
        const Command *c = e.command.isEmpty() ? current : findCommand(e.command);
        std::fputs((c ? usageOf(*c) : usage()).toUtf8().constData(), stderr);
        return 2;
    } catch (const DocumentError &e) {
        for (const QString &line : e.lines)
            printErr(line);
        return finish(1);
    } catch (const QuilletRootException &e) {
        printErr(e.GetMessage());
        return finish(1);
    }
}
