#pragma once
#include "support/TestDatabase.h"

#include <QStringList>
#include <memory>

namespace qln::bench {

// One database for the whole run on the engine QUILLON_TEST_PG selects, connected as the
// program connects, with an inventory-shaped table of `items` rows made on first use.
class BenchDatabase {
public:
    static BenchDatabase &instance();
    static int itemCount();

    // Keys of rows spread over the table, for the benchmarks to cycle through.
    const QStringList &sampleDepts() const { return m_depts; }
    const QStringList &sampleVendors() const { return m_vendors; }
    const QStringList &sampleSLs() const { return m_sls; }

private:
    BenchDatabase();
    void fill();
    std::unique_ptr<test::TestDatabase> m_db;
    QStringList m_depts, m_vendors, m_sls;
};

constexpr int kBenchTable = 1;

} // namespace qln::bench
