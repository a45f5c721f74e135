// Shared main for every Qt-based test binary: an application object so that signals, timers and
// widgets work, and private XDG folders so that no test touches the user's real files.
#include <QApplication>
#include <QTemporaryDir>
#include <gtest/gtest.h>

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QTemporaryDir home;
    for (const char* name : {"XDG_DATA_HOME", "XDG_CACHE_HOME", "XDG_CONFIG_HOME"})
        qputenv(name, (home.path() + '/' + name).toUtf8());

    QApplication app(argc, argv);
    QApplication::setOrganizationName(QStringLiteral("ostrel-tests"));
    QApplication::setApplicationName(QStringLiteral("ostrel-motion-tests"));
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
