#include "DemoData.h"

#include "common/ItemNumber.h"
#include "common/ProcessState.h"
#include "platform/Clock.h"
#include "platform/Settings.h"
#include "promo/PromoPricing.h"
#include "shell/Tables.h"
#include "store/Common.h"
#include "store/Database.h"
#include "store/Departments.h"
#include "store/Inventory.h"
#include "store/MatrixGroups.h"
#include "store/MtxItem.h"
#include "store/RecordOps.h"
#include "store/TableLayout.h"
#include "store/Upc.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QRandomGenerator>
#include <QRegularExpression>
#include <QSet>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlDriver>
#include <QSqlQuery>
#include <QTextStream>
#include <sqlite3.h>
#include <string>
#include <vector>

namespace qln::demo {

namespace {

// ------------------------------------------------------------------ words

struct TopDepartment {
    const char *name;
    QList<const char *> categories;
    QList<const char *> nouns;
};

const QList<TopDepartment> &departmentTree()
{
    static const QList<TopDepartment> tree = {
        {"Grocery", {"Canned Goods", "Breakfast", "Baking", "Snacks"},
         {"Tomato Soup", "Corn Flakes", "Rolled Oats", "Flour", "Sugar", "Pretzels", "Crackers", "Peanut Butter", "Honey"}},
        {"Dairy", {"Milk", "Cheese", "Yogurt"}, {"Whole Milk", "Skim Milk", "Cheddar", "Mozzarella", "Greek Yogurt", "Butter"}},
        {"Produce", {"Fruit", "Vegetables", "Herbs"}, {"Apples", "Bananas", "Carrots", "Potatoes", "Basil", "Lemons", "Onions"}},
        {"Hardware", {"Hand Tools", "Fasteners", "Paint", "Electrical"},
         {"Claw Hammer", "Wood Screws", "Wall Paint", "Extension Cord", "Pliers", "Tape Measure", "Light Bulb"}},
        {"Garden", {"Seeds", "Tools", "Soil"}, {"Tomato Seeds", "Garden Hose", "Potting Mix", "Trowel", "Rake", "Fertilizer"}},
        {"Apparel", {"Men", "Women", "Kids", "Footwear"}, {"Crew Tee", "Denim Jeans", "Hoodie", "Rain Jacket", "Socks", "Sneakers"}},
        {"Housewares", {"Kitchen", "Bath", "Storage"}, {"Frying Pan", "Mixing Bowl", "Bath Towel", "Storage Box", "Mug", "Kettle"}},
        {"Health", {"Vitamins", "First Aid", "Personal Care"}, {"Vitamin C", "Bandages", "Toothpaste", "Shampoo", "Hand Soap"}},
        {"Pet", {"Dog", "Cat"}, {"Dog Food", "Cat Litter", "Chew Toy", "Cat Treats", "Leash"}},
        {"Toys", {"Games", "Outdoor", "Crafts"}, {"Puzzle", "Board Game", "Kite", "Crayons", "Jump Rope", "Building Set"}},
    };
    return tree;
}

QStringList words(std::initializer_list<const char *> list)
{
    QStringList out;
    for (const char *w : list)
        out << QString::fromUtf8(w);
    return out;
}

const QStringList kBrands = words({"Riverside", "Northfield", "Acme", "Bluebird", "Oakhill", "Sunny Day", "Harbor", "Maple",
                             "Summit", "Greenway", "Golden", "Prairie"});
const QStringList kSizes = words({"100g", "250g", "500g", "1kg", "1L", "2L", "6pk", "12pk", "Small", "Medium", "Large", "Each"});
const QStringList kVariants = words({"Original", "Low Fat", "Organic", "Family Size", "Red", "Blue", "Green", "Black", "Vanilla",
                               "Unscented", "Value Pack", ""});
const QStringList kVendors = words({"ACME", "NORTHFRESH", "RIVERSUPPLY", "BLUEBIRD", "OAKHILL", "HARBORDIST", "PRAIRIEFOODS",
                              "SUMMITTOOLS", "GREENWAY", "GOLDENPET", "MAPLEHOME", "O'NEILL&SONS"});
const QStringList kColours = words({"Red", "Navy", "Black", "White"});
const QStringList kApparelSizes = words({"S", "M", "L", "XL"});
const QStringList kGroups = words({"Summer Sale", "Back To School", "Garden Days", "Pet Week", "Holiday Gifts", "Clearance"});

QString fit(const QString &text, int width) { return text.left(width).leftJustified(width, QLatin1Char(' ')); }

// ------------------------------------------------------------------ files

bool writeText(const QString &path, const QStringList &lines)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        return false;
    QTextStream out(&file);
    for (const QString &line : lines)
        out << line << "\r\n";
    return true;
}

bool writeFiles(const DemoOptions &o)
{
    const QDir dir(o.path);
    return writeText(dir.filePath(QStringLiteral("ZOR.INI")),
                     {QStringLiteral("; Quillon demo data set"), QStringLiteral("[DATABASE]"), QStringLiteral("STATION=1"),
                      QStringLiteral("[INVENTORY]"), QStringLiteral("Format ItemID=Yes"), QStringLiteral("[MISCELLANEOUS]"),
                      QStringLiteral("Datapath=") + o.path}) &&
           writeText(dir.filePath(QStringLiteral("Country.set")),
                     {QStringLiteral("[CountryNumber]1[CountryName]United States"),
                      QStringLiteral("[CountryNumber]2[CountryName]United Kingdom"),
                      QStringLiteral("[CountryNumber]3[CountryName]New Zealand"),
                      QStringLiteral("[CountryNumber]4[CountryName]Canada"), QStringLiteral("[Country]1"),
                      QStringLiteral("[Currency Symbol]$"), QStringLiteral("[Include Tax in Displayed Price]N"),
                      QStringLiteral("[Label For Tax]TAX"), QStringLiteral("[Round]N"), QStringLiteral("[DrawerCount]Cnt:1"),
                      QStringLiteral("[Check]Y"), QStringLiteral("[Country]2"), QString::fromUtf8("[Currency Symbol]\u00a3"),
                      QStringLiteral("[Include Tax in Displayed Price]Y"), QStringLiteral("[Label For Tax]VAT"),
                      QStringLiteral("[Round]N"), QStringLiteral("[Country]3"), QStringLiteral("[Currency Symbol]$"),
                      QStringLiteral("[Include Tax in Displayed Price]Y"), QStringLiteral("[Label For Tax]GST"),
                      QStringLiteral("[Round]Y"), QStringLiteral("[Round To]10"), QStringLiteral("[Country]4"),
                      QStringLiteral("[Currency Symbol]$"), QStringLiteral("[Include Tax in Displayed Price]N"),
                      QStringLiteral("[Label For Tax]GST")}) &&
           writeText(dir.filePath(QStringLiteral("Groups.QLN")), [] {
               QStringList lines;
               for (int i = 0; i < kGroups.size(); ++i)
                   lines << QStringLiteral("[CODE]%1 [LABEL]%2").arg(i + 1).arg(kGroups[i]);
               return lines;
           }());
}

// ------------------------------------------------------------------ database

bool createDatabase(const DemoOptions &o, QString &error)
{
    if (o.provider == Provider::SQLite) {
        const QString file = QDir(o.path).filePath(o.database + QStringLiteral(".db"));
        QFile::remove(file);
        QFile::remove(file + QStringLiteral("-wal"));
        QFile::remove(file + QStringLiteral("-shm"));
        sqlite3 *db = nullptr;
        const bool ok = sqlite3_open(file.toUtf8().constData(), &db) == SQLITE_OK;
        sqlite3_close(db);
        if (!ok)
            error = QStringLiteral("Cannot create %1").arg(file);
        return ok;
    }
    ConnectionInfo admin{o.provider, o.server, QStringLiteral("postgres"), o.user, o.password, o.path};
    Connection server;
    if (!server.open(admin)) {
        error = server.lastError().description;
        return false;
    }
    server.execute(QStringLiteral("DROP DATABASE IF EXISTS %1").arg(o.database));
    if (!server.execute(QStringLiteral("CREATE DATABASE %1").arg(o.database))) {
        error = server.lastError().description;
        return false;
    }
    return true;
}

void connect(const DemoOptions &o)
{
    gsDataPath = o.path;
    gDBProvider = o.provider;
    gsDBServer = o.server;
    gsDBUser = o.user;
    gsDBPassword = o.password;
    gsDBName = o.database;
    giDBTableCount = 8;
    gpDB_Registry_dim();
    gpDB_Connect(QString());
    dbServer().connect({o.provider, o.server, QString(), o.user, o.password, o.path});
}

void saveSettings(const DemoOptions &o)
{
    const QString section = QStringLiteral("DATABASE");
    SaveSetting(kZorSettings, section, QStringLiteral("Provider"), providerName(o.provider));
    SaveSetting(kZorSettings, section, QStringLiteral("DBName"), o.database);
    SaveSetting(kZorSettings, section, QStringLiteral("Server"), o.server);
    SaveSetting(kZorSettings, section, QStringLiteral("UserName"), o.user.isEmpty() ? QStringLiteral("sa") : o.user);
    SaveSetting(kZorSettings, section, QStringLiteral("Password"), o.password);
}

// Rows go in through one prepared statement, their values bound as they are typed.
class BatchInsert final : public RowSink {
public:
    explicit BatchInsert(int iTable) : m_table(dbuaTable[iTable].sSqlFile), m_query(dbConnection().database()) {}
    ~BatchInsert() override
    {
        if (m_sqlite)
            sqlite3_finalize(m_sqlite);
    }
    // One row, whose values `put` hands to the sink in column order.
    template <class Put>
    void insert(Put put)
    {
        if (m_count++ == 0) {
            ColumnCount columns;
            put(columns);
            prepare(columns.n);
        }
        m_column = 0;
        put(*this);
        if (m_sqlite) {
            if (sqlite3_step(m_sqlite) != SQLITE_DONE && m_failed.isEmpty())
                m_failed = QString::fromUtf8(sqlite3_errmsg(sqlite3_db_handle(m_sqlite)));
            sqlite3_reset(m_sqlite);
        } else if (!m_query.exec() && m_failed.isEmpty()) {
            m_failed = m_query.lastError().text();
        }
    }
    // A row from its table's value text.
    void add(const QString &values)
    {
        const QStringList fields = splitValues(values);
        insert([&](RowSink &sink) {
            for (const QString &field : fields)
                sink.text(field);
        });
    }
    int count() const { return m_count; }
    const QString &failed() const { return m_failed; }

    void text(const QString &value) override
    {
        if (!m_sqlite)
            return m_query.bindValue(m_column++, value);
        // Blank padding is not stored: a CHAR column reads back padded, and comparisons
        // ignore trailing blanks. A third of the bytes to write and sort.
        qsizetype size = value.size();
        while (size > 0 && value[size - 1] == QLatin1Char(' '))
            --size;
        // The database holds UTF-8: handing it that saves a conversion and an allocation
        // inside SQLite for every field. Each column keeps its buffer until the step.
        std::string &utf8 = m_texts[m_column];
        utf8.clear();
        const char16_t *units = reinterpret_cast<const char16_t *>(value.utf16());
        bool ascii = true;
        for (qsizetype i = 0; i < size && ascii; ++i)
            ascii = units[i] < 0x80;
        if (ascii) {
            utf8.resize(size_t(size));
            for (qsizetype i = 0; i < size; ++i)
                utf8[size_t(i)] = char(units[i]);
        } else {
            utf8 = QStringView(value).left(size).toUtf8().toStdString();
        }
        sqlite3_bind_text(m_sqlite, ++m_column, utf8.data(), int(utf8.size()), SQLITE_STATIC);
    }
    void integer(qint32 value) override
    {
        if (m_sqlite)
            sqlite3_bind_int(m_sqlite, ++m_column, value);
        else
            m_query.bindValue(m_column++, value);
    }
    void real(double value) override
    {
        if (m_sqlite)
            sqlite3_bind_double(m_sqlite, ++m_column, value);
        else
            m_query.bindValue(m_column++, value);
    }
    void money(Money value) override
    {
        // A decimal column of SQLite stores the nearest double either way, which the
        // quotient of the exact units is; PostgreSQL keeps the exact text.
        if (m_sqlite)
            sqlite3_bind_double(m_sqlite, ++m_column, value.toDouble());
        else
            m_query.bindValue(m_column++, value.toPlainText());
    }

private:
    struct ColumnCount final : RowSink {
        int n = 0;
        void text(const QString &) override { ++n; }
        void integer(qint32) override { ++n; }
        void real(double) override { ++n; }
        void money(Money) override { ++n; }
    };

    void prepare(int columns)
    {
        m_texts.resize(size_t(columns));
        QStringList marks;
        for (int i = 0; i < columns; ++i)
            marks << QStringLiteral("?");
        const QString sql = QStringLiteral("INSERT INTO ") + m_table + QStringLiteral(" VALUES(") + marks.join(QLatin1Char(',')) +
                            QLatin1Char(')');
        const QVariant handle = dbConnection().database().driver()->handle();
        if (qstrcmp(handle.typeName(), "sqlite3*") == 0) {
            sqlite3 *db = *static_cast<sqlite3 *const *>(handle.data());
            if (sqlite3_prepare_v2(db, sql.toUtf8().constData(), -1, &m_sqlite, nullptr) == SQLITE_OK)
                return;
            m_failed = QString::fromUtf8(sqlite3_errmsg(db));
        }
        m_query.prepare(sql);
    }

    // "1, 'A''B','20261122 00:00:00',2.5" -> 1 | A'B | 2026-11-22 00:00:00 | 2.5
    static QStringList splitValues(const QString &values)
    {
        QStringList fields;
        int i = 0;
        const int n = int(values.size());
        while (i <= n) {
            while (i < n && values[i] == QLatin1Char(' '))
                ++i;
            if (i < n && values[i] == QLatin1Char('\'')) {
                int end = values.indexOf(QLatin1Char('\''), i + 1);
                while (end >= 0 && end + 1 < n && values[end + 1] == QLatin1Char('\''))
                    end = values.indexOf(QLatin1Char('\''), end + 2);
                if (end < 0)
                    end = n;
                QString text = values.mid(i + 1, end - i - 1);
                if (text.contains(QLatin1Char('\'')))
                    text.replace(QStringLiteral("''"), QStringLiteral("'"));
                fields << isoDate(text);
                i = values.indexOf(QLatin1Char(','), end);
            } else {
                const int comma = values.indexOf(QLatin1Char(','), i);
                fields << values.mid(i, (comma < 0 ? n : comma) - i).trimmed();
                i = comma;
            }
            if (i < 0)
                break;
            ++i;
        }
        return fields;
    }
    // "20261122 00:00:00" -> "2026-11-22 00:00:00"
    static QString isoDate(const QString &value)
    {
        if (value.size() != 17 || value[8] != QLatin1Char(' ') || value[11] != QLatin1Char(':'))
            return value;
        return value.left(4) + QLatin1Char('-') + value.mid(4, 2) + QLatin1Char('-') + value.mid(6);
    }

    QString m_table;
    QSqlQuery m_query;
    sqlite3_stmt *m_sqlite = nullptr;
    std::vector<std::string> m_texts;
    int m_column = 0;
    int m_count = 0;
    QString m_failed;
};

// Indexes go on after the load: one sort per index instead of a million tree inserts.
QStringList dropIndexes(int iTable)
{
    static const QRegularExpression name(QStringLiteral("Index\\s+(\\w+)\\s+On\\s+(\\w+)"), QRegularExpression::CaseInsensitiveOption);
    QStringList statements;
    for (const QString &piece : dbuaTable[iTable].sIndexSql.split(QLatin1Char(';'))) {
        const auto m = name.match(piece);
        if (!m.hasMatch())
            continue;
        dbConnection().execute(QStringLiteral("Drop index %1.%2").arg(m.captured(2), m.captured(1)));
        statements << piece.trimmed();
    }
    return statements;
}

// ------------------------------------------------------------------ the data

struct Department {
    QString code, name;
    int top = 0;
};

struct Builder {
    const DemoOptions &o;
    QRandomGenerator rng;
    DemoReport &report;
    QList<Department> departments;
    QList<int> leaves;
    int matrixCount = 0;
    static constexpr int kMatrixSize = 12; // four colours by three sizes, after the root item
    static constexpr int kApparel = 5;     // matrices are apparel
    QDate today = Clock::today();
    qint32 nextUniqueId = 1;

    Builder(const DemoOptions &options, DemoReport &r) : o(options), rng(options.seed), report(r) {}

    int pick(int n) { return int(rng.bounded(quint32(n))); }
    Money cents(int from, int to) { return Money::fromUnits(qint64(from + pick(to - from + 1)) * 100); }

    void company()
    {
        gCommon = CommonRecord();
        gCommon.Cname = fit(o.headOffice ? QStringLiteral("Quillon Demo Head Office") : QStringLiteral("Quillon Demo Store"), 40);
        gCommon.Ccity = fit(QStringLiteral("Riverside"), 25);
        gCommon.StoreNumber = 1;
        gCommon.MultiStore = o.headOffice ? QStringLiteral("H") : QStringLiteral("N");
        gCommon.USEurope = QStringLiteral("U");
        gCommon.CountryID = 1;
        gCommon.TaxRate1 = 6.5f;
        gCommon.TaxRate2 = 2.0f;
        gCommon.TaxRate3 = 1.0f;
        gfbDB_RecordOp(kCommonTable, kOpInsert);
    }

    // "001.000.000" is the table's own General row; the tree starts at 002.
    static QString deptCode(int top, int category, int sub)
    {
        return QStringLiteral("%1.%2.%3")
            .arg(top + 2, 3, 10, QLatin1Char('0'))
            .arg(category, 3, 10, QLatin1Char('0'))
            .arg(sub, 3, 10, QLatin1Char('0'));
    }

    void departmentRows()
    {
        static const QStringList grades = words({" Basic", " Premium", " Value"});
        const auto &tree = departmentTree();
        for (int t = 0; t < tree.size(); ++t) {
            departments << Department{deptCode(t, 0, 0), QString::fromUtf8(tree[t].name), t};
            for (int c = 0; c < tree[t].categories.size(); ++c) {
                departments << Department{deptCode(t, c + 1, 0), QString::fromUtf8(tree[t].categories[c]), t};
                for (int s = 0; s < grades.size(); ++s) {
                    leaves << int(departments.size());
                    departments << Department{deptCode(t, c + 1, s + 1), QString::fromUtf8(tree[t].categories[c]) + grades[s], t};
                }
            }
        }
        for (const Department &d : departments) {
            gDept = DeptRecord();
            gDept.DeptCode = d.code;
            gDept.Department = fit(d.name, 20);
            gDept.TaxCode = QStringLiteral("A");
            gDept.Poll = QStringLiteral(" ");
            gfbDB_RecordOp(kDeptTable, kOpInsert);
        }
        report.departments = int(departments.size());
    }

    // The item of index i; the first ones make the matrices: a root, then its members.
    void item(int i, bool onPromo)
    {
        InventoryRecord &r = gInventory;
        r = InventoryRecord();
        const bool matrix = i < matrixCount * (kMatrixSize + 1);
        const int inMatrix = i % (kMatrixSize + 1);
        const Department &dept = departments[leaves[matrix ? 0 : pick(int(leaves.size()))]];
        const TopDepartment &top = departmentTree()[matrix ? kApparel : dept.top];
        r.SL = QString::number(10000000 + i);
        r.RecordNum = 11 + i;
        const QString id = (i % 5 < 3) ? QString::number(100000 + qint64(i) * 7) : QStringLiteral("%1-%2").arg(QChar(QLatin1Char('A' + i % 26))).arg(i);
        r.ItemID = gfsItemID_format(id, false);
        if (matrix) {
            const QString noun = QString::fromUtf8(top.nouns[(i / (kMatrixSize + 1)) % top.nouns.size()]);
            r.Description = fit(QStringLiteral("%1 %2 #%3").arg(kBrands[i / (kMatrixSize + 1) % kBrands.size()], noun).arg(i / (kMatrixSize + 1) + 1), 30);
            r.SubDescription = inMatrix == 0 ? fit(QStringLiteral("Matrix"), 20)
                                             : fit(kColours[(inMatrix - 1) % 4] + QLatin1Char(' ') + kApparelSizes[(inMatrix - 1) / 4], 20);
            (inMatrix == 0 ? r.FlgMatrix : r.FlgMatrixItem) = QStringLiteral("Y");
            r.DeptCode = deptCode(kApparel, 1, 1);
        } else {
            r.Description = fit(kBrands[pick(int(kBrands.size()))] + QLatin1Char(' ') + QString::fromUtf8(top.nouns[pick(int(top.nouns.size()))]) +
                                    QLatin1Char(' ') + kSizes[pick(int(kSizes.size()))],
                                30);
            r.SubDescription = fit(kVariants[pick(int(kVariants.size()))], 20);
            r.DeptCode = dept.code;
        }
        r.VendorCode = fit(kVendors[pick(int(kVendors.size()))], 15);
        r.Price = cents(49, 24999);
        r.Cost = Money::fromUnits(r.Price.units() * (45 + pick(35)) / 100).rounded(2);
        r.AvgCost = r.Cost;
        r.QtyOnHand = Money::fromWhole(pick(500));
        r.MinQ = 2;
        r.MaxQ = 50;
        r.QTYINPACK = 1;
        r.TaxCode = QStringList{QStringLiteral("A"), QStringLiteral("A"), QStringLiteral("F"), QStringLiteral("B"), QStringLiteral(" ")}[pick(5)];
        r.PriceIncTax = Money::fromDouble(r.Price.toDouble() * (r.TaxCode == QLatin1String("A") ? 1.065 : r.TaxCode == QLatin1String("F") ? 1.085 : r.TaxCode == QLatin1String("B") ? 1.02 : 1.0)).rounded(2);
        r.AllowDiscounts = pick(100) < 4 ? QStringLiteral("N") : QStringLiteral("Y");
        r.Status = !matrix && pick(100) == 0 ? QStringLiteral("D") : QStringLiteral(" ");
        r.FlgPromoPrice = onPromo ? QStringLiteral("Y") : QStringLiteral(" ");
        r.LocFront = fit(QStringLiteral("A%1").arg(pick(40)), 8);
        r.LocBack = fit(QStringLiteral("B%1").arg(pick(40)), 8);
        r.Price2 = r.Price;
        r.UnitsPerUOM = 1;
        r.UOM = fit(QStringLiteral("EA"), 5);
    }

    void promo(const QString &sl, const QString &dept, qint32 invuid, qint32 group, QDate start, int days, int type, Money change,
               bool tombstone)
    {
        gpPromo_clear();
        PromoPriceRecord &p = gPromo;
        p.Store = qint16(o.headOffice ? 1 + pick(5) : 1);
        p.SL = fit(sl, 8);
        p.Dept = fit(dept, 11);
        p.StartDate = QDateTime(start, QTime(0, 0));
        p.EndDate = QDateTime(start.addDays(days), QTime(0, 0));
        p.ChangeDate = QDateTime(qMin(start, today), QTime(0, 0));
        p.PriceChange = change;
        p.ChangeType = qint16(tombstone ? kChangeDeleted : type);
        p.Poll = pick(3) == 0 ? QStringLiteral(" ") : QStringLiteral("Y");
        p.GroupID = group;
        p.Invuid = invuid;
        p.UniqueID = nextUniqueId++;
    }

    Money changeFor(int type, Money price)
    {
        switch (type) {
        case kChangeTo: return Money::fromUnits(price.units() * (60 + pick(35)) / 100).rounded(2);
        case kChangeBy: return cents(25, 500);
        default: return Money::fromWhole(5 + 5 * pick(10));
        }
    }
};

} // namespace

bool gfbDemo_build(const DemoOptions &o, DemoReport &report, QString &error, const std::function<void(const QString &)> &progress)
{
    QElapsedTimer timer;
    timer.start();
    auto say = [&](const QString &text) {
        if (progress)
            progress(text);
    };
    report = DemoReport();
    if (!QDir().mkpath(o.path) || !writeFiles(o)) {
        error = QStringLiteral("Cannot write the data path %1").arg(o.path);
        return false;
    }
    if (!createDatabase(o, error))
        return false;
    connect(o);
    if (!gbDBConnected) {
        error = dbConnection().lastError().description;
        return false;
    }
    if (o.saveSettings)
        saveSettings(o);

    Builder b(o, report);
    gpCommon_Open(kCommonTable, o.path);
    gfbDB_TableOpen(kCommonTable);
    b.company();
    if (!gfbCommon_Read()) {
        error = QStringLiteral("The company record could not be written");
        return false;
    }
    gpTables_register();
    gfbTables_recordsets_open(0);

    QSqlDatabase &db = dbConnection().database();
    if (o.provider == Provider::SQLite) {
        // A new file that nobody else uses yet: no need to sync, and sorts may use both cores.
        // A write-ahead log slows down as it grows: one this big goes straight to the file.
        for (const char *pragma : {"PRAGMA journal_mode=OFF", "PRAGMA synchronous=OFF", "PRAGMA cache_size=-262144",
                                   "PRAGMA temp_store=MEMORY", "PRAGMA threads=2"})
            dbConnection().execute(QString::fromUtf8(pragma));
    }
    db.transaction();
    say(QStringLiteral("departments"));
    b.departmentRows();

    // Which items carry promos is known before they are written, for their promo flag.
    const int itemPromos = o.promos >= 0 ? o.promos : o.items / 50;
    b.matrixCount = qMin(40, o.items / 100);
    QList<int> promoItems;
    promoItems.reserve(itemPromos);
    QSet<int> onPromo;
    for (int i = 0; i < itemPromos && o.items > 0; ++i) {
        const int item = b.pick(o.items);
        promoItems << item;
        onPromo.insert(item);
    }

    say(QStringLiteral("items"));
    const QStringList itemIndexes = dropIndexes(kInventoryTable);
    const QStringList upcIndexes = dropIndexes(kUpcTable);
    QList<QPair<QString, Money>> items; // SL and price, for the promos
    items.reserve(o.items);
    {
        BatchInsert inventory(kInventoryTable), upc(kUpcTable);
        for (int i = 0; i < o.items; ++i) {
            b.item(i, onPromo.contains(i));
            items << qMakePair(gInventory.SL, gInventory.Price);
            const QString sl = gInventory.SL, description = gInventory.Description;
            const qint32 recordNum = gInventory.RecordNum;
            inventory.insert(gpInventory_row_put);
            for (int u = 0; u < (i % 10 == 0 ? 2 : 1); ++u) {
                gUpc = UpcRecord();
                gUpc.SL = sl;
                gUpc.UPC = fit(QString::number(400000000000LL + qint64(i) * 3 + u), 15);
                gUpc.LABEL = fit(description, 30);
                gUpc.POLL = QStringLiteral(" ");
                gUpc.InvUID = recordNum;
                upc.insert(gpUpc_row_put);
            }
            if (i % 100000 == 99999)
                say(QStringLiteral("items: %1").arg(i + 1));
        }
        report.items = inventory.count();
        report.upcs = upc.count();
        if (!inventory.failed().isEmpty() || !upc.failed().isEmpty()) {
            error = inventory.failed() + upc.failed();
            db.rollback();
            return false;
        }
    }

    say(QStringLiteral("matrices"));
    for (int g = 0; g < b.matrixCount; ++g) {
        const int root = g * (Builder::kMatrixSize + 1);
        gMatrixGroups = MatrixGroupRecord();
        gMatrixGroups.GroupUID = g + 1;
        gMatrixGroups.GroupName = fit(QStringLiteral("Crew Tee #%1").arg(g + 1), 32);
        gMatrixGroups.xAxisLabel = fit(QStringLiteral("Colour"), 32);
        gMatrixGroups.yAxisLabel = fit(QStringLiteral("Size"), 32);
        gMatrixGroups.zAxisLabel = fit(QString(), 32);
        gMatrixGroups.InvUID = 11 + root;
        gMatrixGroups.ItemID = fit(QString::number(100000 + qint64(root) * 7), 15);
        gMatrixGroups.Price = items[root].second;
        gMatrixGroups.Cost = Money::fromUnits(items[root].second.units() / 2);
        gMatrixGroups.MatrixExists = -1;
        gMatrixGroups.MatrixBuilt = -1;
        gfbDB_RecordOp(kMatrixGroupsTable, kOpInsert);
        for (int m = 1; m <= Builder::kMatrixSize; ++m) {
            gMtxItem = MtxItemRecord();
            gMtxItem.InvUID = 11 + root + m;
            gMtxItem.MatrixGroupUID = g + 1;
            gMtxItem.xAxisValue = fit(kColours[(m - 1) % 4], 32);
            gMtxItem.yAxisValue = fit(kApparelSizes[(m - 1) / 4], 32);
            gMtxItem.zAxisValue = fit(QString(), 32);
            gMtxItem.xpos = qint16((m - 1) % 4);
            gMtxItem.Ypos = qint16((m - 1) / 4);
            gfbDB_RecordOp(kMtxItemTable, kOpInsert);
        }
    }
    report.matrices = b.matrixCount;

    say(QStringLiteral("promos"));
    const QStringList promoIndexes = dropIndexes(kPromoTable);
    {
        BatchInsert promos(kPromoTable);
        auto itemPromo = [&](int item, qint32 group, QDate start, int days, int type, Money change, bool tombstone) {
            b.promo(items[item].first, QString(), 11 + item, group, start, days, type, change, tombstone);
            promos.add(gfsPromo_values_get());
        };
        // Items: expired, running and future ranges, some overlapping, some tombstones.
        for (int item : promoItems) {
            const int type = b.pick(3);
            itemPromo(item, 0, b.today.addDays(b.pick(120) - 80), 3 + b.pick(40), type, b.changeFor(type, items[item].second),
                      b.pick(50) == 0);
        }
        // Departments take "By" and "By Percent" only.
        for (int d = 0; d < qMin(24, int(b.departments.size())); ++d) {
            const int type = 1 + b.pick(2);
            b.promo(QString(), b.departments[b.pick(int(b.departments.size()))].code, 0, 0, b.today.addDays(b.pick(60) - 30),
                    7 + b.pick(21), type, b.changeFor(type, Money::fromWhole(10)), d % 12 == 11);
            promos.add(gfsPromo_values_get());
        }
        // Groups: every member carries the group's shared values.
        for (int g = 1; g <= kGroups.size() && o.items > 0; ++g) {
            const int type = b.pick(3);
            const QDate start = b.today.addDays(b.pick(40) - 20);
            const int days = 7 + b.pick(14);
            const Money change = b.changeFor(type == kChangeTo ? kChangeBy : type, Money::fromWhole(10));
            for (int m = 0; m < 8 + b.pick(8); ++m)
                itemPromo(b.pick(o.items), g, start, days, type == kChangeTo ? kChangeBy : type, change, false);
        }
        // Matrices: every item of the matrix, under 1000 plus its number.
        for (int g = 0; g < qMin(5, b.matrixCount); ++g) {
            const QDate start = b.today.addDays(b.pick(30) - 10);
            for (int m = 1; m <= Builder::kMatrixSize; ++m)
                itemPromo(g * (Builder::kMatrixSize + 1) + m, 1001 + g, start, 14, kChangeByPercent, Money::fromWhole(20), false);
        }
        // Daily: store-wide percentages, numbered down from -1.
        for (int d = 0; d < 6; ++d) {
            b.promo(QString(), QString(), 0, -1 - d, b.today.addDays(7 * d - 21), 2, kChangeByPercent, Money::fromWhole(10 + 5 * (d % 3)),
                    false);
            promos.add(gfsPromo_values_get());
        }
        report.promos = promos.count();
        if (!promos.failed().isEmpty()) {
            error = promos.failed();
            db.rollback();
            return false;
        }
    }
    say(QStringLiteral("indexes"));
    for (const QString &statement : itemIndexes + upcIndexes + promoIndexes)
        dbConnection().execute(statement);
    if (!db.commit()) {
        error = db.lastError().text();
        return false;
    }
    say(QStringLiteral("statistics"));
    if (o.provider == Provider::SQLite) // sampled statistics are enough for the planner
        dbConnection().execute(QStringLiteral("PRAGMA analysis_limit=400"));
    dbConnection().execute(QStringLiteral("ANALYZE"));
    if (o.provider == Provider::SQLite)
        dbConnection().execute(QStringLiteral("PRAGMA journal_mode=WAL"));
    report.seconds = timer.elapsed() / 1000.0;
    return true;
}

DemoOptions gfDemo_options(const ConnectionInfo &connection, const QString &dataPath, int items)
{
    DemoOptions o;
    o.path = dataPath;
    o.items = items;
    o.provider = connection.provider;
    o.server = connection.server;
    o.user = connection.user;
    o.database = connection.database;
    return o;
}

} // namespace qln::demo
