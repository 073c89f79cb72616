#pragma once
#include "common/ProcessState.h"
#include "store/Database.h"
#include "store/RecordOps.h"
#include "store/TableCreate.h"
#include "support/ScriptedMessages.h"
#include "support/TestDatabase.h"

#include <gtest/gtest.h>

namespace qln::test {

// A table of six text columns and a number; key k walks the first k text columns.
struct WalkRecord {
    QString seg[6];
    int n = 0;
};
inline WalkRecord gWalk;
constexpr int kWalkTable = 4;

// A fresh database, connected the way start-up connects, with an empty registry.
class ConnectedStore : public ::testing::Test {
protected:
    void SetUp() override
    {
        gsDataPath = db.dataPath();
        gsAppPath = db.dataPath();
        gDBProvider = db.info().provider;
        gsDBServer = db.info().server;
        gsDBUser = db.info().user;
        gsDBName = db.info().database;
        gpDB_Registry_dim();
        gpDB_Connect(QString());
        ASSERT_TRUE(gbDBConnected) << dbConnection().lastError().description.toStdString();
        dbServer().connect(db.info());
    }
    void TearDown() override
    {
        dbaRecordset.clear();
        dbConnection().close();
    }

    TestDatabase db;
    ScriptedMessages boxes;
};

class StoreFixture : public ConnectedStore {
protected:
    void SetUp() override
    {
        ConnectedStore::SetUp();
        gpDB_Table_register(kWalkTable, QStringLiteral("Walk"), QStringLiteral("WALK"), QStringLiteral("Walk"),
                            QStringLiteral("WALK"));
        dbuaTable[kWalkTable].sCreateSql = QStringLiteral(
            "Create Table Walk (S1 CHAR (4) DEFAULT  ' ', S2 CHAR (4) DEFAULT  ' ', S3 CHAR (4) DEFAULT  ' ', "
            "S4 CHAR (4) DEFAULT  ' ', S5 CHAR (4) DEFAULT  ' ', S6 CHAR (4) DEFAULT  ' ', N INTEGER);");
        dbuaTable[kWalkTable].sIndexSql = QStringLiteral("Create Index idx_0 On Walk (S1,S2,S3,S4,S5,S6);");
        gfbDB_TableCreate(kWalkTable);
        gpDB_table_routines_set(kWalkTable, {walkKey, walkRead, walkWrite, walkValues});
        ASSERT_TRUE(gfbDB_TableOpen(kWalkTable));
        gWalk = WalkRecord();
    }

    static void walkKey(int iTable, int iKey)
    {
        switch (iKey) {
        case 1: gpDB_KeySet(iTable, 1, {{0, gWalk.seg[0]}}); break;
        case 2: gpDB_KeySet(iTable, 2, {{0, gWalk.seg[0]}, {1, gWalk.seg[1]}}); break;
        case 3: gpDB_KeySet(iTable, 3, {{0, gWalk.seg[0]}, {1, gWalk.seg[1]}, {2, gWalk.seg[2]}}); break;
        case 4: gpDB_KeySet(iTable, 4, {{0, gWalk.seg[0]}, {1, gWalk.seg[1]}, {2, gWalk.seg[2]}, {3, gWalk.seg[3]}}); break;
        case 5:
            gpDB_KeySet(iTable, 5, {{0, gWalk.seg[0]}, {1, gWalk.seg[1]}, {2, gWalk.seg[2]}, {3, gWalk.seg[3]}, {4, gWalk.seg[4]}});
            break;
        case 6:
            gpDB_KeySet(iTable, 6, {{0, gWalk.seg[0]}, {1, gWalk.seg[1]}, {2, gWalk.seg[2]}, {3, gWalk.seg[3]}, {4, gWalk.seg[4]},
                                    {5, gWalk.seg[5]}});
            break;
        default: gpDB_KeySet(iTable, iKey < 0 ? 0 : 7, {}); break;
        }
    }
    static void walkRead(int iTable)
    {
        for (int i = 0; i < 6; ++i)
            gWalk.seg[i] = gfvDB_FieldGet(iTable, i).toString().leftJustified(4, QLatin1Char(' '), true);
        gWalk.n = gfvDB_FieldGet(iTable, 6).toInt();
    }
    static void walkWrite(int iTable)
    {
        for (int i = 0; i < 6; ++i)
            gpDB_FieldSet(iTable, i, gWalk.seg[i]);
        gpDB_FieldSet(iTable, 6, gWalk.n);
    }
    static QString walkValues()
    {
        QStringList v;
        for (QString &s : gWalk.seg) {
            s = gfsDB_Quote(s, true, 4);
            v << QLatin1Char('\'') + s + QLatin1Char('\'');
        }
        return v.join(QLatin1Char(',')) + QLatin1Char(',') + QString::number(gWalk.n);
    }

    // Inserts a row through the keyed layer.
    bool insert(std::initializer_list<const char *> segs, int n)
    {
        gWalk = WalkRecord();
        int i = 0;
        for (const char *s : segs)
            gWalk.seg[i++] = QString::fromUtf8(s).leftJustified(4);
        gWalk.n = n;
        return gfbDB_RecordOp(kWalkTable, kOpInsert);
    }
    void seek(std::initializer_list<const char *> segs)
    {
        gWalk = WalkRecord();
        int i = 0;
        for (const char *s : segs)
            gWalk.seg[i++] = QString::fromUtf8(s).leftJustified(4);
    }
};

} // namespace qln::test
