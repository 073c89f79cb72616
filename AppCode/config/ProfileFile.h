#pragma once
#include <QString>
#include <optional>

namespace qln {

// Settings files of "[Section]" heads and "key=value" lines, read and written with the meaning
// of the Windows profile operations:
// - sections and keys match without regard to case, blanks around names and values don't count,
//   and a value in matching quotes loses them; the first of a duplicated section or key wins;
// - lines starting with ";" are comments; they, blank lines and anything else that isn't a key
//   stay as they are when the file is rewritten; the file keeps its kind of line end (a new
//   one gets CR LF), and a last line without one gets it only when lines are added behind it;
// - std::nullopt is the platform's null argument (see each operation).
using ProfileArg = std::optional<QString>;

// A file that exists but can't be read or written, as the platform's run-time error.
struct ProfileError {
    int number = 0; // 0: none
    QString text;
    explicit operator bool() const { return number != 0; }
};

// GetPrivateProfileString into a buffer of `size` characters. `returned` gets the characters
// copied, the closing 0 left out, and the result is their count:
// - no section: the names of all sections, each ended by a 0 character;
// - no key: the names of the keys of the section, the same way;
// - else the value, or the default with its trailing blanks removed.
// A value too long is cut to size - 1; a list too long to size - 2, which the result then says.
// A missing file reads as an empty one.
int GetPrivateProfileString(const ProfileArg &section, const ProfileArg &key,
                            const ProfileArg &defaultValue, QString &returned, int size,
                            const QString &file, ProfileError *error = nullptr);

// WritePrivateProfileString: sets a value, adding the key at the end of its section and the
// section at the end of the file when missing (the file is created if need be). No value deletes
// the key, no key deletes the section. With all three null nothing is written and the result
// tells whether the file is there and can be read.
bool WritePrivateProfileString(const ProfileArg &section, const ProfileArg &key,
                               const ProfileArg &value, const QString &file,
                               ProfileError *error = nullptr);

} // namespace qln
