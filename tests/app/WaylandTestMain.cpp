// Main for the tests that need a real Wayland compositor: starts Debian's sway on its headless
// backend in a private runtime folder (as an unprivileged user when run as root, which sway
// refuses), points the application at it, at private XDG folders and at the session bus the
// test runs on, then runs the tests.
#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <QThread>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

constexpr uid_t kUnprivileged = 65534; // nobody
constexpr int kStartLimitMs = 15000;

pid_t g_compositor = -1;

void startSway(const QString& runtime, const QString& config, const QString& log) {
    g_compositor = ::fork();
    if (g_compositor != 0)
        return;
    ::setenv("XDG_RUNTIME_DIR", runtime.toLocal8Bit().constData(), 1);
    ::setenv("WLR_BACKENDS", "headless", 1);
    ::setenv("WLR_LIBINPUT_NO_DEVICES", "1", 1);
    for (const char* name : {"WAYLAND_DISPLAY", "DISPLAY", "SWAYSOCK"})
        ::unsetenv(name);
    FILE* out = std::freopen(log.toLocal8Bit().constData(), "w", stderr);
    (void)out;
    const QByteArray path = config.toLocal8Bit();
    if (::geteuid() == 0)
        ::execlp("setpriv", "setpriv", "--reuid=65534", "--regid=65534", "--clear-groups", "sway",
                 "-c", path.constData(), static_cast<char*>(nullptr));
    else
        ::execlp("sway", "sway", "-c", path.constData(), static_cast<char*>(nullptr));
    ::_exit(127);
}

// The compositor's display socket and its control socket, once both exist.
bool waitForSockets(const QDir& runtime) {
    QElapsedTimer waited;
    waited.start();
    while (waited.elapsed() < kStartLimitMs) {
        const QStringList display = runtime.entryList({QStringLiteral("wayland-?")}, QDir::System);
        const QStringList control = runtime.entryList({QStringLiteral("sway-ipc.*")}, QDir::System);
        if (!display.isEmpty() && !control.isEmpty()) {
            qputenv("WAYLAND_DISPLAY", display.first().toLocal8Bit());
            qputenv("SWAYSOCK", runtime.filePath(control.first()).toLocal8Bit());
            return true;
        }
        QThread::msleep(20); // polling for the sockets, bounded by the limit above
    }
    return false;
}

void stopSway() {
    if (g_compositor > 0) {
        ::kill(g_compositor, SIGTERM);
        ::waitpid(g_compositor, nullptr, 0);
    }
}

} // namespace

int main(int argc, char** argv) {
    ::testing::InitGoogleTest(&argc, argv);
    if (GTEST_FLAG_GET(list_tests))
        return RUN_ALL_TESTS();

    QTemporaryDir scratch;
    const QString runtime = scratch.filePath(QStringLiteral("runtime"));
    QDir().mkpath(runtime);
    QFile::setPermissions(runtime, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    if (::geteuid() == 0 && (::chown(runtime.toLocal8Bit().constData(), kUnprivileged,
                                     kUnprivileged) != 0 ||
                             ::chmod(scratch.path().toLocal8Bit().constData(), 0755) != 0))
        return 1;
    const QString config = scratch.filePath(QStringLiteral("sway.conf"));
    QFile file(config);
    if (!file.open(QIODevice::WriteOnly))
        return 1;
    file.write("output HEADLESS-1 resolution 1280x900\nxwayland disable\n");
    file.close();
    const QString log = scratch.filePath(QStringLiteral("sway.log"));

    QElapsedTimer clock;
    clock.start();
    startSway(runtime, config, log);
    if (!waitForSockets(QDir(runtime))) {
        QFile failed(log);
        failed.open(QIODevice::ReadOnly);
        std::fprintf(stderr, "sway did not start:\n%s\n", failed.readAll().constData());
        stopSway();
        return 1;
    }
    std::printf("sway ready after %lld ms\n", static_cast<long long>(clock.elapsed()));
    qputenv("XDG_RUNTIME_DIR", runtime.toLocal8Bit());
    qputenv("QT_QPA_PLATFORM", "wayland");
    qputenv("XDG_SESSION_TYPE", "wayland");
    qunsetenv("DISPLAY");
    for (const char* name : {"XDG_DATA_HOME", "XDG_CACHE_HOME", "XDG_CONFIG_HOME"})
        qputenv(name, (scratch.path() + '/' + name).toUtf8());

    int status = 0;
    {
        QApplication app(argc, argv);
        QApplication::setOrganizationName(QStringLiteral("ostrel-tests"));
        QApplication::setApplicationName(QStringLiteral("ostrel-motion-wayland-tests"));
        QApplication::setDesktopFileName(QStringLiteral("com.ostrel.motion"));
        status = RUN_ALL_TESTS();
    }
    stopSway();
    return status;
}
