// halvane plot: pictures of antenna patterns. The tool's dispatch hands the
// command line over before any application object exists, with the tool's
// own ways of reading a document and writing a file.
#ifndef HALVANE_TOOLS_PLOT_H
#define HALVANE_TOOLS_PLOT_H

#include <halvane/base/quilletobject.h>

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <functional>
#include <memory>

namespace plot {

/*! A failure to report in one line: exit code 2 for usage, 1 for documents. */
struct Failure {
    QString message;
    int code;
};

struct ToolIo {
    /*! The document in FILE, read without validation; \a from is the format
        given on the command line, or empty for the file's extension. */
    std::function<std::unique_ptr<QUILLET::IQuilletObject>(const QString &file, const QString &from)> load;
    /*! Writes the whole file or nothing; "-" is standard output. */
    std::function<void(const QString &file, const QByteArray &bytes)> write;
};

/*! halvane plot FILE [OUT] [--entry INDEX] [--csv] [--to svg|png|csv] [--from FORMAT];
    argv[1] is "plot". Returns the exit code. */
int run(int argc, char **argv, const ToolIo &io);

} // namespace plot

#endif
