#include "store/ActivityStore.h"

#include "store/DQDataCatchHelper.h"

#include <QDateTime>
#include <QFile>
#include <QFileInfo>
#include <QSqlError>
#include <QSqlQuery>

namespace ostrel {

namespace {

const QString kDayFormat = QStringLiteral("yyyy-MM-dd");

// Migration n brings the schema from version n - 1 to n. Never edit one that has shipped.
const QList<QStringList>& migrations() {
    static const QList<QStringList> steps{
        {
            QStringLiteral("CREATE TABLE schema_version (version INTEGER NOT NULL)"),
            QStringLiteral(
                "CREATE TABLE intervals (id INTEGER PRIMARY KEY, day TEXT NOT NULL, "
                "posture INTEGER NOT NULL, start_ms INTEGER NOT NULL, "
                "duration_ms INTEGER NOT NULL, desk TEXT NOT NULL DEFAULT '', "
                "transition INTEGER NOT NULL DEFAULT 0, open INTEGER NOT NULL DEFAULT 0)"),
            QStringLiteral("CREATE INDEX intervals_by_day ON intervals (day)"),
            QStringLiteral(
                "CREATE TABLE daily_totals (day TEXT PRIMARY KEY, "
                "sitting_ms INTEGER NOT NULL DEFAULT 0, standing_ms INTEGER NOT NULL DEFAULT 0, "
                "away_ms INTEGER NOT NULL DEFAULT 0, unknown_ms INTEGER NOT NULL DEFAULT 0, "
                "transitions INTEGER NOT NULL DEFAULT 0)"),
            QStringLiteral("CREATE TABLE preferences (key TEXT PRIMARY KEY, value)"),
        },
    };
    return steps;
}

QString dayText(const QDate& day) {
    return day.toString(kDayFormat);
}

} // namespace

QString ActivityStore::defaultPath() {
    return DQDataCatchHelper::getDocPath() + QLatin1Char('/') + QLatin1String(kFileName);
}

ActivityStore::ActivityStore(const QString& path, Mode mode)
    : m_path(path), m_connection(QStringLiteral("activity-%1").arg(quintptr(this))) {
    m_db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), m_connection);
    m_db.setDatabaseName(m_path);
    if (mode == Mode::ReadOnly) {
        if (QFile::exists(m_path))
            open(Mode::ReadOnly);
        return;
    }
    // A file the user marked read-only stays untouched, even for a user who could write it.
    const QFileInfo file(m_path);
    const bool writable =
        file.exists() ? file.isWritable() && file.permissions().testFlag(QFileDevice::WriteOwner)
                      : QFileInfo(file.absolutePath()).isWritable();
    if (!writable) {
        open(Mode::ReadOnly);
        return;
    }
    // Checked read-only first: a writing connection would delete the -wal and -shm files of a
    // damaged database as it closes, and they belong with it.
    const bool sound = !file.exists() || (open(Mode::ReadOnly) && checkIntegrity());
    m_db.close();
    if (!sound || !open(Mode::ReadWrite)) {
        moveAside();
        open(Mode::ReadWrite);
    }
    m_writable = isOpen() && migrate();
    // Intervals left open by a run that ended without closing them keep what was saved.
    if (m_writable)
        exec(QStringLiteral("UPDATE intervals SET open = 0 WHERE open = 1"));
}

ActivityStore::~ActivityStore() {
    m_db.close();
    m_db = QSqlDatabase();
    QSqlDatabase::removeDatabase(m_connection);
}

bool ActivityStore::open(Mode mode) {
    m_db.setConnectOptions(mode == Mode::ReadOnly
                               ? QStringLiteral("QSQLITE_OPEN_READONLY;QSQLITE_BUSY_TIMEOUT=2000")
                               : QStringLiteral("QSQLITE_BUSY_TIMEOUT=2000"));
    if (!m_db.open())
        return false;
    if (mode == Mode::ReadOnly)
        return true;
    // WAL: readers (the command line) never block the writer. NORMAL: a killed process loses
    // nothing that was committed; only a power cut may lose the last commits.
    QSqlQuery journal(m_db);
    if (!journal.exec(QStringLiteral("PRAGMA journal_mode = WAL")) || !journal.next() ||
        journal.value(0).toString() != u"wal") {
        m_db.close();
        return false;
    }
    return exec(QStringLiteral("PRAGMA synchronous = NORMAL"));
}

bool ActivityStore::checkIntegrity() const {
    QSqlQuery check(m_db);
    return check.exec(QStringLiteral("PRAGMA integrity_check")) && check.next() &&
           check.value(0).toString() == u"ok";
}

void ActivityStore::moveAside() {
    m_db.close();
    const QString stamp = QDateTime::currentDateTime().toString(QStringLiteral("yyyyMMdd-HHmmss"));
    m_movedAsideTo = m_path + QStringLiteral(".corrupt-") + stamp;
    for (const char* suffix : {"", "-wal", "-shm"}) {
        const QString from = m_path + QLatin1String(suffix);
        if (QFile::exists(from) && !QFile::rename(from, m_movedAsideTo + QLatin1String(suffix)))
            QFile::remove(from); // a file we cannot move we cannot keep using either
    }
}

int ActivityStore::schemaVersion() const {
    QSqlQuery query(m_db);
    if (query.exec(QStringLiteral("SELECT MAX(version) FROM schema_version")) && query.next())
        return query.value(0).toInt();
    return 0;
}

bool ActivityStore::migrate() {
    const int current = schemaVersion();
    if (current > kSchemaVersion)
        return false; // written by a newer version: read it, leave it alone
    for (int version = current + 1; version <= kSchemaVersion; ++version) {
        const bool done = transaction([&] {
            for (const QString& statement : migrations().at(version - 1)) {
                if (!exec(statement))
                    return false;
            }
            return exec(QStringLiteral("DELETE FROM schema_version")) &&
                   exec(QStringLiteral("INSERT INTO schema_version (version) VALUES (?)"),
                        {version});
        });
        if (!done)
            return false;
    }
    return true;
}

bool ActivityStore::transaction(const std::function<bool()>& work) {
    if (!m_db.transaction())
        return false;
    if (work() && m_db.commit())
        return true;
    m_db.rollback();
    return false;
}

bool ActivityStore::exec(const QString& sql, const QVariantList& values) const {
    QSqlQuery query(m_db);
    if (!query.prepare(sql))
        return false;
    for (const QVariant& value : values)
        query.addBindValue(value);
    return query.exec();
}

// ---- Writes ----

bool ActivityStore::saveDuration(qint64 id, qint64 durationMs, bool close) {
    if (!isWritable())
        return false;
    return transaction([&] {
        return exec(QStringLiteral("UPDATE intervals SET duration_ms = ?, open = ? WHERE id = ?"),
                    {durationMs, close ? 0 : 1, id});
    });
}

qint64 ActivityStore::switchInterval(qint64 closingId, qint64 closingMs,
                                     const ActivityInterval& next) {
    if (!isWritable())
        return 0;
    qint64 id = 0;
    transaction([&] {
        if (closingId != 0 &&
            !exec(QStringLiteral("UPDATE intervals SET duration_ms = ?, open = 0 WHERE id = ?"),
                  {closingMs, closingId}))
            return false;
        QSqlQuery insert(m_db);
        insert.prepare(QStringLiteral(
            "INSERT INTO intervals (day, posture, start_ms, duration_ms, desk, transition, open) "
            "VALUES (?, ?, ?, ?, ?, ?, 1)"));
        for (const QVariant& value : QVariantList{
                 dayText(next.day), int(next.posture), next.start.toMSecsSinceEpoch(),
                 next.durationMs,
                 // a null text would be NULL, which the column refuses
                 next.desk.isNull() ? QStringLiteral("") : next.desk, next.transition ? 1 : 0})
            insert.addBindValue(value);
        if (!insert.exec())
            return false;
        id = insert.lastInsertId().toLongLong();
        return true;
    });
    return id;
}

bool ActivityStore::compact(const QDate& today) {
    if (!isWritable())
        return false;
    const QVariantList cutoff{dayText(today.addDays(1 - kKeptDays))};
    return transaction([&] {
        return exec(QStringLiteral(
                        "INSERT INTO daily_totals (day, sitting_ms, standing_ms, away_ms, "
                        "unknown_ms, transitions) SELECT day, "
                        "SUM(CASE posture WHEN 0 THEN duration_ms ELSE 0 END), "
                        "SUM(CASE posture WHEN 1 THEN duration_ms ELSE 0 END), "
                        "SUM(CASE posture WHEN 2 THEN duration_ms ELSE 0 END), "
                        "SUM(CASE posture WHEN 3 THEN duration_ms ELSE 0 END), SUM(transition) "
                        "FROM intervals WHERE day < ? AND open = 0 GROUP BY day "
                        "ON CONFLICT (day) DO UPDATE SET "
                        "sitting_ms = sitting_ms + excluded.sitting_ms, "
                        "standing_ms = standing_ms + excluded.standing_ms, "
                        "away_ms = away_ms + excluded.away_ms, "
                        "unknown_ms = unknown_ms + excluded.unknown_ms, "
                        "transitions = transitions + excluded.transitions"),
                    cutoff) &&
               exec(QStringLiteral("DELETE FROM intervals WHERE day < ? AND open = 0"), cutoff);
    });
}

bool ActivityStore::setPreference(const QString& key, const QVariant& value) {
    if (!isWritable())
        return false;
    return transaction([&] {
        return exec(QStringLiteral("INSERT OR REPLACE INTO preferences (key, value) VALUES (?, ?)"),
                    {key, value});
    });
}

// ---- Reads ----

DayList ActivityStore::days(const QDate& from, const QDate& to) const {
    DayList result;
    for (QDate day = from; day <= to; day = day.addDays(1))
        result.append(DayTotals{day, {}, 0});
    if (!isOpen() || result.isEmpty())
        return result;
    const auto at = [&](const QString& text) -> DayTotals* {
        const qint64 index = from.daysTo(QDate::fromString(text, kDayFormat));
        return index >= 0 && index < result.size() ? &result[index] : nullptr;
    };
    QSqlQuery recent(m_db);
    recent.prepare(
        QStringLiteral("SELECT day, posture, SUM(duration_ms), SUM(transition) "
                       "FROM intervals WHERE day BETWEEN ? AND ? GROUP BY day, posture"));
    recent.addBindValue(dayText(from));
    recent.addBindValue(dayText(to));
    if (recent.exec()) {
        while (recent.next()) {
            const int posture = recent.value(1).toInt();
            DayTotals* day = at(recent.value(0).toString());
            if (!day || posture < 0 || posture >= int(kPostures.size()))
                continue;
            day->add(Posture(posture), recent.value(2).toLongLong());
            day->transitions += recent.value(3).toInt();
        }
    }
    QSqlQuery old(m_db);
    old.prepare(QStringLiteral("SELECT day, sitting_ms, standing_ms, away_ms, unknown_ms, "
                               "transitions FROM daily_totals WHERE day BETWEEN ? AND ?"));
    old.addBindValue(dayText(from));
    old.addBindValue(dayText(to));
    if (old.exec()) {
        while (old.next()) {
            DayTotals* day = at(old.value(0).toString());
            if (!day)
                continue;
            for (Posture posture : kPostures)
                day->add(posture, old.value(1 + int(posture)).toLongLong());
            day->transitions += old.value(5).toInt();
        }
    }
    return result;
}

QList<ActivityInterval> ActivityStore::intervals(const QDate& from, const QDate& to) const {
    QList<ActivityInterval> result;
    QSqlQuery query(m_db);
    query.prepare(QStringLiteral("SELECT id, day, posture, start_ms, duration_ms, desk, "
                                 "transition, open FROM intervals WHERE day BETWEEN ? AND ? "
                                 "ORDER BY start_ms, id"));
    query.addBindValue(dayText(from));
    query.addBindValue(dayText(to));
    if (!isOpen() || !query.exec())
        return result;
    while (query.next()) {
        const int posture = query.value(2).toInt();
        if (posture < 0 || posture >= int(kPostures.size()))
            continue;
        result.append({query.value(0).toLongLong(),
                       QDate::fromString(query.value(1).toString(), kDayFormat), Posture(posture),
                       QDateTime::fromMSecsSinceEpoch(query.value(3).toLongLong(), Qt::UTC),
                       query.value(4).toLongLong(), query.value(5).toString(),
                       query.value(6).toBool(), query.value(7).toBool()});
    }
    return result;
}

QVariant ActivityStore::preference(const QString& key, const QVariant& fallback) const {
    QSqlQuery query(m_db);
    query.prepare(QStringLiteral("SELECT value FROM preferences WHERE key = ?"));
    query.addBindValue(key);
    if (isOpen() && query.exec() && query.next())
        return query.value(0);
    return fallback;
}

} // namespace ostrel
