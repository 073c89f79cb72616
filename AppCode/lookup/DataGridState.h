#pragma once
#include <QList>
#include <QString>
#include <QStringList>
#include <QVariantList>
#include <array>
#include <functional>
#include <vector>

// What the paging grid and the lookup window share. One lookup exists at a time, so the
// state is the program's, as the grid's column table is.
namespace qln {

struct GridColumn {
    QString sCaption;
    int iField = 99; // ordinal of the record's field; 99: none behind the column (entry column)
    int iFormat = 0;
    int lWidth = 0; // twips; 0 hides the column
    int iAlign = 1;
    quint32 lBackColor = 0xFFFFFF;
};
constexpr int kNoField = 99;

// A note found by the description scan: the item it belongs to and the text shown.
struct WildHit {
    QString sSL;
    qint32 lRecordNum = 0;
    QString sText;
    bool bUsed = false;
};

// A quantity typed in the entry column, for the caller to read.
struct LookupEntry {
    QString sSL; // key form
    QString sQty;
};

inline std::vector<GridColumn> gaGridColumns;

inline int iLookupFile = 1;
inline int iLookupKey = 3;
inline int iSortField = 2;
inline int iSortField2 = -1;
inline int iGridRows = 14;
inline int iGridRowCount = 14;
inline int iGridCols = 0;
inline int iFirstCol = 0;
inline QString sSearchText;
inline QString sKeyFieldName;
inline QString sOrderClause;
inline QString sWhereClause;  // the vendor filter's lower bound
inline QString sWhereClause2; // and its upper bound, where the key has one
inline QString sPosition;
inline bool bAtTop = false;
inline bool bAtBottom = false;
inline bool bWildcard = false;
inline bool bFindMode = false;
inline int iVendorMode = 1;
inline QString sVendorFilter;
inline bool bUpcMode = false;
inline bool bDeptMode = false;
inline bool bStop = false;

// The window's cells by row, then column; row 0 is the header. The grid only mirrors it.
inline QList<QStringList> gaGridText;
inline QList<WildHit> gaWildHits;
// The field values of each record a scan found, in column order.
inline QList<QVariantList> gaInventoryHits;
inline QList<LookupEntry> gaLookupEntries;

// What the column set-up gives the window to show.
struct LookupCaptions {
    QString sTitle;
    QString sSearchLabel;
    QString sExit = QStringLiteral("Exit");
    std::array<QString, 5> saAction;
};
inline LookupCaptions gLookupCaptions;

// Settings that shape the inventory list (ZOR.INI, section "LOOKUP"; see GridSetUpBackOffice.cpp).
struct LookupSettings {
    bool bDeptNames = false;      // the "Dept Name" column shows
    bool bRecordNumbers = false;  // a "UID" column
    bool bLongDescriptions = false; // item notes stand in for short descriptions
    bool bCostSecurity = false;   // cost shows only to users with the right
    bool bMatrixRootsHidden = true;
    bool bScanning = false;       // scanner entry in list building
    QString sSalesHead;           // the stores a head office looks into, "|" between entries
    bool bPhoneLookup = false;    // the names list shows Phone in place of A/R Code
    bool bBalancesHidden = false; // the names list offers no "Verify Balances"
    double dScreenRatio = 1.6;    // width / height of the screen, for tall rows
};
inline LookupSettings gLookupSettings;

// The right that lets a user see cost.
constexpr int kRightSeeCost = 46;

} // namespace qln
