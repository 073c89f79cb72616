/* The database's collation for SQLite tools other than this program: ".load qln_collation"
   in the sqlite3 shell, load_extension() elsewhere. */
#include "QlnCollation.h"

#include <sqlite3ext.h>
SQLITE_EXTENSION_INIT1

#ifdef _WIN32
__declspec(dllexport)
#endif
int sqlite3_qlncollation_init(sqlite3 *db, char **error, const sqlite3_api_routines *api)
{
    SQLITE_EXTENSION_INIT2(api);
    (void)error;
    return sqlite3_create_collation_v2(db, "QLN_CI", SQLITE_UTF8, 0, qln_collation_compare, 0);
}
