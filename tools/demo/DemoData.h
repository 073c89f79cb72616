#pragma once
#include "platform/Connection.h"
#include "platform/SqlDialect.h"

#include <QString>
#include <functional>

namespace qln::demo {

// What a demo data set holds. Deterministic for a given seed.
struct DemoOptions {
    QString path;                 // the data path to write
    int items = 20000;
    int promos = -1;              // item promo rows; -1: one for every fifty items
    quint32 seed = 1;
    bool headOffice = false;      // MultiStore "H"
    Provider provider = Provider::SQLite;
    QString server;               // PostgreSQL: "host\port"
    QString user;
    QString password;
    QString database = QStringLiteral("ZORDATA1");
    bool saveSettings = false;    // point this user's "ZOR Settings" at the set
};

// The options of a set written into dataPath, on the database that `connection` names.
DemoOptions gfDemo_options(const ConnectionInfo &connection, const QString &dataPath, int items);

struct DemoReport {
    int items = 0, upcs = 0, departments = 0, matrices = 0, promos = 0;
    double seconds = 0;
};

// Writes ZOR.INI, Country.set, Groups.QLN and a complete database into options.path.
// False with `error` set when the database cannot be made or written.
bool gfbDemo_build(const DemoOptions &options, DemoReport &report, QString &error,
                   const std::function<void(const QString &)> &progress = {});

} // namespace qln::demo
