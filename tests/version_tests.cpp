// The version: one number in the build, the same in the header, in the
// library and in what the tool prints.
#include <halvane/halvane.h>

#include <gtest/gtest.h>

#include <QtCore/QProcess>
#include <QtCore/QString>

TEST(Version, HeaderAndLibraryAgree)
{
    const QString parts = QStringLiteral("%1.%2.%3").arg(HALVANE_VERSION_MAJOR).arg(HALVANE_VERSION_MINOR).arg(HALVANE_VERSION_PATCH);
    EXPECT_EQ(parts, QLatin1String(HALVANE_VERSION_STRING));
    EXPECT_EQ(QLatin1String(HALVANE::libraryVersion()), QLatin1String(HALVANE_VERSION_STRING));
    EXPECT_EQ(HALVANE_VERSION, (HALVANE_VERSION_MAJOR << 16) | (HALVANE_VERSION_MINOR << 8) | HALVANE_VERSION_PATCH);
}

#ifdef HALVANE_TOOL
TEST(Version, ToolPrintsTheLibraryVersion)
{
    QProcess p;
    p.start(QStringLiteral(HALVANE_TOOL), {QStringLiteral("--version")});
    ASSERT_TRUE(p.waitForFinished(60000));
    EXPECT_EQ(p.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(p.exitCode(), 0);
    EXPECT_EQ(QString::fromUtf8(p.readAllStandardOutput()),
              QStringLiteral("halvane %1 (Qt %2)\n").arg(QLatin1String(HALVANE_VERSION_STRING), QLatin1String(qVersion())));
    EXPECT_TRUE(p.readAllStandardError().isEmpty());
}
#endif
