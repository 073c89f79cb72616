#pragma once
#include <QList>
#include <QString>

namespace qln {

class clsINI_Services;

// A word the site may call otherwise, under its number.
struct TermRecord {
    QString sName;
    QString sDefault; // from the system's file
    QString sDefined; // the site's word; blank: use the default
    bool bUse = true; // false: the site's word is switched off
    int iLen = 0;     // the room the term has; 0: no limit
};

// Indexed by the term's number; entry 0 and numbers no file names stay blank.
inline QList<TermRecord> gaTerms;

// Reads SYSTERMS.MSG, then USRTERMS.MSG over it, from `sFolder`: every entry the site's file
// has replaces the system's. A missing file adds nothing. False when the system's file is missing.
bool gfbTerms_load(const QString &sFolder);
// The folder of the term files: TERMSPATH of section "ZOR Terms", else the data path.
QString gfsTerms_path(clsINI_Services &ini, const QString &sDataPath);

// The number of the term named sName (upper-cased, trimmed), 0 when none has it.
int gfiTerm_Index(const QString &sName);
// The term's text, trimmed: the site's word, else the default; iCase 1 upper, 2 lower case.
// A term with neither text reads "ERROR" after telling the user.
QString gfsTerm(int iTerm, int iCase = 0);
QString gfsTerm(const QString &sName, int iCase = 0);
void gpTerm_Missing(const QString &sWhich);

} // namespace qln
