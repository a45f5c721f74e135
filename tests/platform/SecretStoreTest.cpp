// Where the application keeps a password, as it picks the place at each request: the desktop's
// secret service when one runs (here GNOME Keyring, started by the test on a session bus of its
// own, its login keyring unlocked with a password on its standard input), else a file in the data
// folder that only the user may read.
#include "app/RealTimeWait.h"
#include "platform/DesktopSecretStore.h"
#include "store/DQDataCatchHelper.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QDir>
#include <QProcess>
#include <QTemporaryDir>
#include <csignal>
#include <gtest/gtest.h>
#include <sys/prctl.h>
#include <sys/stat.h>

namespace ostrel::test {
namespace {

constexpr int kWaitMs = 10000;
const QString kKey = QStringLiteral("mqtt");

class SecretStoreTest : public ::testing::Test {
protected:
    void TearDown() override {
        if (keyring.state() != QProcess::NotRunning) {
            keyring.terminate();
            keyring.waitForFinished();
            waitUntil([] { return !SecretServiceStore::isRunning(); }, kWaitMs);
        }
    }

    bool startKeyring() {
        // Its control socket and its keyrings in a folder only the user may enter.
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        for (const char* folder : {"XDG_RUNTIME_DIR", "XDG_DATA_HOME"})
            environment.insert(QLatin1String(folder), home.path());
        keyring.setProcessEnvironment(environment);
        // A test that crashes must not leave its keyring behind.
        keyring.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGTERM); });
        keyring.start(QStringLiteral(OSTREL_GNOME_KEYRING_DAEMON),
                      QStringLiteral("--foreground --unlock --components=secrets").split(u' '));
        if (!keyring.waitForStarted())
            return false;
        keyring.write("keyring password");
        keyring.closeWriteChannel();
        return waitUntil(SecretServiceStore::isRunning, kWaitMs);
    }

    // The service's own answer: how many (unlocked) items it holds under our key.
    static int itemsInKeyring() {
        QDBusMessage search = QDBusMessage::createMethodCall(
            QStringLiteral("org.freedesktop.secrets"), QStringLiteral("/org/freedesktop/secrets"),
            QStringLiteral("org.freedesktop.Secret.Service"), QStringLiteral("SearchItems"));
        qDBusRegisterMetaType<QMap<QString, QString>>();
        search << QVariant::fromValue(QMap<QString, QString>{{QStringLiteral("key"), kKey}});
        const QDBusMessage reply = QDBusConnection::sessionBus().call(search);
        if (reply.type() != QDBusMessage::ReplyMessage)
            return -1;
        return int(qdbus_cast<QList<QDBusObjectPath>>(reply.arguments().value(0)).size());
    }

    static std::optional<QString> load(SecretStore& store) {
        QObject context;
        std::optional<std::optional<QString>> answer;
        store.load(kKey, &context, [&](std::optional<QString> secret) { answer = secret; });
        EXPECT_TRUE(waitUntil([&] { return answer.has_value(); }, kWaitMs));
        return answer.value_or(std::nullopt);
    }

    static bool save(SecretStore& store, const QString& secret) {
        QObject context;
        std::optional<bool> answer;
        store.store(kKey, secret, &context, [&](bool ok) { answer = ok; });
        return waitUntil([&] { return answer.has_value(); }, kWaitMs) && *answer;
    }

    // Kept, replaced, and removed by an empty secret.
    static void roundTrip(SecretStore& store, const std::function<void()>& afterEachSave) {
        for (const QString& secret : {QStringLiteral("s3cret pass"), QStringLiteral("ünïcode")}) {
            ASSERT_TRUE(save(store, secret));
            EXPECT_EQ(load(store), secret);
            afterEachSave();
        }
        ASSERT_TRUE(save(store, {}));
        EXPECT_EQ(load(store), std::nullopt);
    }

    // Beside the settings files.
    static QString dataFolder() { return DQDataCatchHelper::getDocPath(); }

    QTemporaryDir home;
    QProcess keyring;
};

TEST_F(SecretStoreTest, WithoutASecretServiceAFileOnlyTheUserReads) {
    ASSERT_FALSE(SecretServiceStore::isRunning());
    const std::unique_ptr<SecretStore> secrets = SecretStore::forDesktop();
    const auto* desktop = dynamic_cast<DesktopSecretStore*>(secrets.get());
    ASSERT_NE(desktop, nullptr);
    const QString path = desktop->files().pathFor(kKey);
    EXPECT_TRUE(path.startsWith(dataFolder())) << path.toStdString();
    roundTrip(*secrets, [&] {
        struct stat file {};
        ASSERT_EQ(::stat(QFile::encodeName(path).constData(), &file), 0);
        EXPECT_EQ(file.st_mode & 0777, 0600u);
    });
    EXPECT_FALSE(QFile::exists(path));
}

// A service that starts after the first request is used from then on; the password put in a file
// before is still found.
TEST_F(SecretStoreTest, TheDesktopsSecretServiceOnceOneRuns) {
    const std::unique_ptr<SecretStore> secrets = SecretStore::forDesktop();
    ASSERT_TRUE(save(*secrets, QStringLiteral("kept in a file")));
    ASSERT_TRUE(startKeyring()) << keyring.readAllStandardError().toStdString();
    EXPECT_EQ(load(*secrets), QStringLiteral("kept in a file"));
    roundTrip(*secrets, [&] {
        EXPECT_EQ(itemsInKeyring(), 1);
        EXPECT_TRUE(QDir(dataFolder()).entryList({QStringLiteral("*.secret")}).isEmpty());
    });
    EXPECT_EQ(itemsInKeyring(), 0);
}

} // namespace
} // namespace ostrel::test
