#include "QlnCollation.h"

static int fold(int c) { return c >= 'A' && c <= 'Z' ? c + 32 : c; }

int qln_collation_compare(void *unused, int n1, const void *p1, int n2, const void *p2)
{
    const unsigned char *a = (const unsigned char *)p1;
    const unsigned char *b = (const unsigned char *)p2;
    (void)unused;
    while (n1 > 0 && a[n1 - 1] == ' ')
        --n1;
    while (n2 > 0 && b[n2 - 1] == ' ')
        --n2;
    const int n = n1 < n2 ? n1 : n2;
    for (int i = 0; i < n; ++i) {
        const int ca = fold(a[i]), cb = fold(b[i]);
        if (ca != cb)
            return ca - cb;
    }
    return n1 - n2;
}
