#include "BenchDatabase.h"

#include "common/ProcessState.h"
#include "store/Database.h"
#include "store/RecordOps.h"

#include <QElapsedTimer>
#include <QSqlError>
#include <QSqlQuery>
#include <cstdio>

namespace qln::bench {

namespace {

const char *kCreate =
    "Create Table BenchInvt (SL CHAR (8) NOT NULL DEFAULT  ' ', ItemID CHAR (25) DEFAULT  ' ', Description CHAR (30) DEFAULT  ' ', "
    "VendorCode CHAR (15) DEFAULT  ' ', DeptCode CHAR (11) DEFAULT  ' ', Price DECIMAL (18,4), Cost DECIMAL (18,4), "
    "TaxCode CHAR (1) DEFAULT  ' ', Status CHAR(1) DEFAULT  ' ', RecordNum INTEGER)";
const char *kIndexes[] = {
    "Create UNIQUE  CLUSTERED Index idx_0 On BenchInvt (RecordNum)",
    "Create UNIQUE Index idx_1 On BenchInvt (SL)",
    "Create UNIQUE Index idx_3 On BenchInvt (Description, SL)",
    "Create UNIQUE Index idx_8 On BenchInvt (DeptCode, SL)",
    "Create UNIQUE Index idx_6 On BenchInvt (VendorCode, DeptCode, SL)",
};

// Rows built by the engine itself: departments and vendors cycle, SL counts up.
QString fillSql(Provider provider, int items)
{
    const QString count = QString::number(items);
    if (provider == Provider::Postgres)
        return QStringLiteral("INSERT INTO BenchInvt SELECT lpad(x::text, 8, '0'), (x * 7)::text, 'ITEM ' || "
                              "lpad(((x::bigint * 7919) % 1000003)::text, 6, '0'), 'V' || lpad((x % 500)::text, 4, '0'), "
                              "lpad((x % 20)::text, 3, '0') || '.' || lpad((x % 15)::text, 3, '0') || '.' || "
                              "lpad((x % 300)::text, 3, '0'), (x % 9000) / 100.0 + 1, (x % 9000) / 200.0 + 0.5, 'A', ' ', x "
                              "FROM generate_series(1, ") + count + QStringLiteral(") AS g(x)");
    return QStringLiteral("WITH RECURSIVE c(x) AS (SELECT 1 UNION ALL SELECT x + 1 FROM c WHERE x < ") + count +
           QStringLiteral(") INSERT INTO BenchInvt SELECT printf('%08d', x), printf('%d', x * 7), "
                          "'ITEM ' || printf('%06d', (x * 7919) % 1000003), 'V' || printf('%04d', x % 500), "
                          "printf('%03d.%03d.%03d', x % 20, x % 15, x % 300), (x % 9000) / 100.0 + 1, "
                          "(x % 9000) / 200.0 + 0.5, 'A', ' ', x FROM c");
}

} // namespace

int BenchDatabase::itemCount() { return qEnvironmentVariableIntValue("QUILLON_BENCH_ITEMS") > 0 ? qEnvironmentVariableIntValue("QUILLON_BENCH_ITEMS") : 1000000; }

BenchDatabase &BenchDatabase::instance()
{
    static BenchDatabase db;
    return db;
}

BenchDatabase::BenchDatabase() : m_db(std::make_unique<test::TestDatabase>())
{
    gsDataPath = m_db->dataPath();
    gDBProvider = m_db->info().provider;
    gsDBServer = m_db->info().server;
    gsDBUser = m_db->info().user;
    gsDBName = m_db->info().database;
    gpDB_Registry_dim();
    gpDB_Connect(QString());
    fill();
    gpDB_Table_register(kBenchTable, QStringLiteral("BenchInvt"), QStringLiteral("BENCH"), QStringLiteral("BenchInvt"),
                        QStringLiteral("Bench"));
    gfbDB_TableOpen(kBenchTable);
}

void BenchDatabase::fill()
{
    QElapsedTimer timer;
    timer.start();
    Connection &c = dbConnection();
    c.execute(QString::fromUtf8(kCreate));
    QSqlQuery q(c.database());
    if (!q.exec(fillSql(c.provider(), itemCount())))
        std::fprintf(stderr, "fill failed: %s\n", qPrintable(q.lastError().text()));
    for (const char *index : kIndexes)
        c.execute(QString::fromUtf8(index));
    QSqlQuery(c.database()).exec(QStringLiteral("ANALYZE"));
    std::fprintf(stderr, "%s: %d rows ready in %.1f s\n", qPrintable(providerName(c.provider())), itemCount(),
                 timer.elapsed() / 1000.0);
    // Every 997th row: keys spread over the whole table.
    QSqlQuery sample(c.database());
    sample.exec(QStringLiteral("SELECT DeptCode, VendorCode, SL FROM BenchInvt WHERE RecordNum % 997 = 0 ORDER BY RecordNum"));
    while (sample.next()) {
        m_depts << sample.value(0).toString();
        m_vendors << sample.value(1).toString();
        m_sls << sample.value(2).toString();
    }
}

} // namespace qln::bench
