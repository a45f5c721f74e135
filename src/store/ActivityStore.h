#pragma once

#include "store/ActivityRecord.h"

#include <QSqlDatabase>
#include <QString>
#include <QVariant>
#include <functional>

namespace ostrel {

// The standing-time record in SQLite (activity.sqlite in the data folder): intervals of the last
// year, daily totals of the years before, and the activity preferences. Every write is one
// transaction; the caller decides how often (the recorder: a state change or a minute).
//
// Opening checks the file. One that cannot be opened or fails its integrity check is renamed
// aside with its -wal and -shm files (movedAsideTo() says where) and a new one is started. A file
// that is not writable is read but never written (isWritable() is false); nothing is lost.
class ActivityStore {
public:
    enum class Mode { ReadWrite, ReadOnly };
    static constexpr int kSchemaVersion = 1;
    static constexpr int kKeptDays = 366;
    static constexpr char kFileName[] = "activity.sqlite";

    // The file in the application's data folder.
    static QString defaultPath();

    explicit ActivityStore(const QString& path, Mode mode = Mode::ReadWrite);
    ~ActivityStore();
    ActivityStore(const ActivityStore&) = delete;
    ActivityStore& operator=(const ActivityStore&) = delete;

    bool isOpen() const { return m_db.isOpen(); }
    bool isWritable() const { return isOpen() && m_writable; }
    const QString& path() const { return m_path; }
    // Where an unusable file was moved on opening; empty when it was fine.
    const QString& movedAsideTo() const { return m_movedAsideTo; }

    // ---- Writes: each is one transaction ----
    // Stores the length of interval `id` so far, or its final length when `close`.
    bool saveDuration(qint64 id, qint64 durationMs, bool close);
    // Closes interval `closingId` (if not 0) at `closingMs` and opens `next`; returns its id,
    // 0 when nothing could be written.
    qint64 switchInterval(qint64 closingId, qint64 closingMs, const ActivityInterval& next);
    // Days before `today` minus the kept days become daily totals; their intervals go.
    bool compact(const QDate& today);
    bool setPreference(const QString& key, const QVariant& value);

    // ---- Reads ----
    // One entry per day from `from` to `to`, empty days included.
    DayList days(const QDate& from, const QDate& to) const;
    QList<ActivityInterval> intervals(const QDate& from, const QDate& to) const;
    QVariant preference(const QString& key, const QVariant& fallback = {}) const;

private:
    bool open(Mode mode);
    bool checkIntegrity() const;
    bool migrate();
    int schemaVersion() const;
    void moveAside();
    bool transaction(const std::function<bool()>& work);
    bool exec(const QString& sql, const QVariantList& values = {}) const;

    QString m_path;
    QString m_connection;
    QSqlDatabase m_db;
    bool m_writable = false;
    QString m_movedAsideTo;
};

} // namespace ostrel
