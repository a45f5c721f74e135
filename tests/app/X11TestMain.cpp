// Main for the tests that need a real X server: starts a private Xvfb (the server picks a free
// display and tells it on its standard output, so parallel runs never collide), points the
// application at it and at private XDG folders, then runs the tests.
#include <QApplication>
#include <QProcess>
#include <QTemporaryDir>
#include <cstdio>
#include <gtest/gtest.h>

int main(int argc, char** argv) {
    ::testing::InitGoogleTest(&argc, argv);
    if (GTEST_FLAG_GET(list_tests))
        return RUN_ALL_TESTS();

    QProcess xvfb;
    xvfb.start(QStringLiteral("Xvfb"), QStringLiteral("-displayfd 1 -screen 0 1280x900x24 "
                                                      "-nolisten tcp -noreset")
                                           .split(u' '));
    const QByteArray display = xvfb.waitForReadyRead(10000) ? xvfb.readLine().trimmed() : "";
    if (display.isEmpty()) {
        std::fprintf(stderr, "Xvfb did not start\n");
        return 1;
    }
    qputenv("DISPLAY", ":" + display);
    qputenv("QT_QPA_PLATFORM", "xcb");
    qputenv("DBUS_SESSION_BUS_ADDRESS", "disabled:");
    QTemporaryDir home;
    for (const char* name : {"XDG_DATA_HOME", "XDG_CACHE_HOME", "XDG_CONFIG_HOME"})
        qputenv(name, (home.path() + '/' + name).toUtf8());

    int status = 0;
    {
        QApplication app(argc, argv);
        QApplication::setOrganizationName(QStringLiteral("ostrel-tests"));
        QApplication::setApplicationName(QStringLiteral("ostrel-motion-x11-tests"));
        status = RUN_ALL_TESTS();
    }
    xvfb.terminate();
    xvfb.waitForFinished();
    return status;
}
