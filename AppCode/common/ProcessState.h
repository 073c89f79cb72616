#pragma once
#include <QString>

// The program's process-wide working values: every window reads and writes these.
namespace qln {

inline QString gsDataPath;    // the data path from the command line, then the open one
inline QString gsStation;     // station number
inline QString gsStationPath; // station folder
inline int giStore = 0;       // StoreNumber of the company record
inline QString gsStore;       // giStore as text
inline bool gbTraining = false;
inline bool gbItemMode = false; // started for one item
inline QString gsSL;            // the current item by key
inline qint32 glInvUID = 0;     // and by RecordNum
inline QString gsDept;          // the current department
inline QString gsSalesCode;     // user of this run, for the tag program
inline bool gbItemID_plain = false; // "Format ItemID" isn't "Yes"

// The program's name in logs and captions, and its own folder (set at start).
inline const QString kProgramName = QStringLiteral("Quillon");
inline QString gsAppPath;

} // namespace qln
