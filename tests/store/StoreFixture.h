#pragma once

#include "store/CurrentDeskModel.h"
#include "store/DQDataCatchHelper.h"

#include <QDir>
#include <QFile>
#include <gtest/gtest.h>

namespace ostrel {

// Every store test starts with an empty data folder (the test main points it at a private
// temporary home) and the default desk model.
class StoreFixture : public ::testing::Test {
protected:
    void SetUp() override {
        QDir(doc()).removeRecursively();
        QDir().mkpath(doc());
        CurrentDeskModel::setName(QStringLiteral("D5"));
    }
    void TearDown() override { QDir(doc()).removeRecursively(); }

    static QString doc() { return DQDataCatchHelper::getDocPath(); }
    static QString docFile(const QString& name) { return doc() + QLatin1Char('/') + name; }
    static bool exists(const QString& name) { return QFile::exists(docFile(name)); }
    static void writeRaw(const QString& name, const QByteArray& bytes) {
        QFile file(docFile(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }
    static QByteArray readRaw(const QString& name) {
        QFile file(docFile(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
};

} // namespace ostrel
