// The department promos window on a large data set: the all-departments view against one
// hand-written query that returns the same rows with the department names.
#include "BenchDataSet.h"
#include "BenchDelay.h"

#include "common/ProcessState.h"
#include "lookup/FlexGrid.h"
#include "platform/Clock.h"
#include "promo/PromoPricing.h"
#include "promo/frmDeptMain.h"
#include "store/Database.h"
#include "store/RecordOps.h"

#include "support/ScriptedMessages.h"

#include <QPushButton>
#include <QSqlQuery>
#include <benchmark/benchmark.h>

using namespace qln;

namespace {

int deptPromoRows()
{
    return gfiDB_RecordCount(kPromoTable, QStringLiteral("PromoPrices WHERE Dept>'000.000.000'"));
}

// The run's data set with department promos brought up to QUILLON_BENCH_DEPT_PROMOS
// (20,000 unless told), spread over every department, live and expired.
bool openDataSet()
{
    static const bool opened = [] {
        if (!bench::gfbDemo_open())
            return false;
        const int wanted = qEnvironmentVariableIsSet("QUILLON_BENCH_DEPT_PROMOS") ? qEnvironmentVariableIntValue("QUILLON_BENCH_DEPT_PROMOS")
                                                                                  : 20000;
        QStringList codes;
        QSqlQuery q(dbConnection().database());
        if (!q.exec(QStringLiteral("SELECT DeptCode FROM Departments")))
            return false;
        while (q.next())
            codes << q.value(0).toString();
        const QDate today = Clock::today();
        const int first = deptPromoRows();
        bench::gpPromos_add(std::max(0, wanted - first), [&](int n) {
            const int i = first + n;
            gPromo.Store = 1, gPromo.Poll = QStringLiteral("Y"), gPromo.SL = QStringLiteral("        ");
            gPromo.Dept = codes[i % codes.size()];
            gPromo.StartDate = QDateTime(today.addDays(i % 90 - 60), QTime(0, 0));
            gPromo.EndDate = gPromo.StartDate.addDays(7 + i % 40);
            gPromo.ChangeDate = gPromo.StartDate;
            gPromo.ChangeType = qint16(1 + i % 2), gPromo.PriceChange = Money::fromWhole(1 + i % 20);
        });
        return true;
    }();
    return opened;
}

void BM_AllDepartmentsView(benchmark::State &state)
{
    if (!openDataSet())
        return state.SkipWithError("no data set");
    const bench::DelayedServer delayed(state);
    test::ScriptedMessages boxes;
    frmDeptMain form;
    form.show();
    bench::gpClicks_time(state, *form.findChild<QPushButton *>(QStringLiteral("CmdDept(1)")),
                         *form.findChild<FlexGrid *>(QStringLiteral("fgrdItems")), boxes);
    state.counters["deptPromos"] = deptPromoRows();
}

// The same rows by one statement: live department promos with the names of their three
// levels joined in.
void BM_AllDepartmentsQuery(benchmark::State &state)
{
    if (!openDataSet())
        return state.SkipWithError("no data set");
    const bench::DelayedServer delayed(state);
    bench::gpQuery_time(state,
                        QStringLiteral("SELECT p.*, d1.Department, d2.Department, d3.Department FROM PromoPrices p "
                                       "LEFT JOIN Departments d1 ON d1.DeptCode = SUBSTR(p.Dept, 1, 3) || '.000.000' "
                                       "LEFT JOIN Departments d2 ON d2.DeptCode = SUBSTR(p.Dept, 1, 7) || '.000' "
                                       "LEFT JOIN Departments d3 ON d3.DeptCode = p.Dept "
                                       "WHERE p.Dept > '000.000.000' AND p.StartDate > '1990-01-01 00:00:00' AND p.EndDate >= ? "
                                       "AND p.ChangeType <> 99 AND p.ChangeType > 0 ORDER BY p.Dept"),
                        15);
}

} // namespace

BENCHMARK(BM_AllDepartmentsQuery)->Unit(benchmark::kMillisecond)->Iterations(1);
BENCHMARK(BM_AllDepartmentsView)->Unit(benchmark::kMillisecond)->Iterations(1);
