// Main for the tests that need a real X server: starts a private Xvfb (the server picks a free
// display and tells it through -displayfd, so parallel runs never collide), points the
// application at it and at private XDG folders, then runs the tests.
#include <QApplication>
#include <QTemporaryDir>
#include <csignal>
#include <cstdio>
#include <gtest/gtest.h>
#include <string>
#include <sys/wait.h>
#include <unistd.h>

namespace {

pid_t g_server = -1;

// Returns the display name, or an empty string when Xvfb could not start.
std::string startXvfb() {
    int pipeEnds[2];
    if (::pipe(pipeEnds) != 0)
        return {};
    g_server = ::fork();
    if (g_server == 0) {
        ::close(pipeEnds[0]);
        const std::string fd = std::to_string(pipeEnds[1]);
        ::execlp("Xvfb", "Xvfb", "-displayfd", fd.c_str(), "-screen", "0", "1280x900x24",
                 "-nolisten", "tcp", "-noreset", static_cast<char*>(nullptr));
        ::_exit(127);
    }
    ::close(pipeEnds[1]);
    std::string number;
    char c = 0;
    while (::read(pipeEnds[0], &c, 1) == 1 && c != '\n')
        number += c;
    ::close(pipeEnds[0]);
    return number.empty() ? std::string() : ":" + number;
}

void stopXvfb() {
    if (g_server > 0) {
        ::kill(g_server, SIGTERM);
        ::waitpid(g_server, nullptr, 0);
    }
}

} // namespace

int main(int argc, char** argv) {
    ::testing::InitGoogleTest(&argc, argv);
    if (GTEST_FLAG_GET(list_tests))
        return RUN_ALL_TESTS();

    const std::string display = startXvfb();
    if (display.empty()) {
        std::fprintf(stderr, "Xvfb did not start\n");
        return 1;
    }
    qputenv("DISPLAY", display.c_str());
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
    stopXvfb();
    return status;
}
