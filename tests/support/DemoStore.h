#pragma once
#include "DemoData.h"
#include "common/ProcessState.h"
#include "platform/Clock.h"
#include "shell/ProcessReset.h"
#include "shell/Startup.h"
#include "store/RecordOps.h"
#include "support/TestDatabase.h"

#include <QDateTime>
#include <gtest/gtest.h>

// The start of every promo window test: the program started at a fixed time on a fresh demo
// store of the given size, with no promo in it.
namespace qln::test {

inline ::testing::AssertionResult gfDemoStore_open(TestDatabase &db, const QString &appPath, const QDateTime &now,
                                                  int items)
{
    gpProcess_reset();
    Clock::setFixed(now);
    gsAppPath = appPath;
    demo::DemoOptions o = demo::gfDemo_options(db.info(), db.dataPath(), items);
    o.promos = 0;
    demo::DemoReport report;
    QString error;
    if (!demo::gfbDemo_build(o, report, error))
        return ::testing::AssertionFailure() << error.toStdString();
    gpProcess_reset();
    if (!gfbStartup_prepare(QStringLiteral("/DATAPATH=") + db.dataPath()))
        return ::testing::AssertionFailure() << "the program did not start on the demo store";
    gfiDB_Execute(QStringLiteral("DELETE FROM PromoPrices"));
    return ::testing::AssertionSuccess();
}

} // namespace qln::test
