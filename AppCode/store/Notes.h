#pragma once
#include <QString>

// Free-text notes of the suite: a note is the run of lines under one file code and reference.
namespace qln {

constexpr int kNotesTable = 2;

struct NotesRecord {
    QString FILECODE; // 1: what the note belongs to, "I" for items
    QString REFCODE;  // 15: items use "&" and the record number
    QString LINENUM;  // 4: "0001" upward
    qint16 NOTEWIDTH = 0; // how many characters of NOTETEXT the line holds
    QString NOTETEXT; // 500
};

inline NotesRecord gNotes;

// Registers the table, installs its routines, and creates it when missing.
void gpNotes_Open(int iTable, const QString &sPath);
void gpNotes_key(int iTable, int iKey);
void gpNotes_read(int iTable);
void gpNotes_write(int iTable);
QString gfsNotes_values();

// The note as one text, its lines joined; a line feed in it is kept.
QString gfsNotes_Read(const QString &sFileCode, const QString &sRefCode);
// Replaces the note. A refused line is told to the user and ends the save, false.
bool gfbNotes_Save(const QString &sFileCode, const QString &sRefCode, const QString &sText);
// Reads line iLine (from 1) of a note into the buffer.
bool gfbNotes_Line(const QString &sFileCode, const QString &sRefCode, int iLine);

} // namespace qln
