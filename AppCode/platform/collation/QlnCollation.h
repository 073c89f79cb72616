#pragma once

#ifdef __cplusplus
extern "C" {
#endif

/* The text order of the embedded database, "QLN_CI": letters A-Z compare as a-z and trailing
   blanks don't count, as the server's collation and the suite's fixed-width fields need. No
   collation SQLite brings does both (NOCASE keeps the blanks, RTRIM keeps the case). */
int qln_collation_compare(void *unused, int n1, const void *p1, int n2, const void *p2);

#ifdef __cplusplus
}
#endif
