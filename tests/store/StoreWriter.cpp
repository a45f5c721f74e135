// Rewrites one property-list file as fast as it can, forever, printing a line after every
// completed write. The atomic-write test kills it at random moments.
//
// Each generation n is {"generation": n, "items": [n repeated count times], "count": count} with
// a count that changes every time, so a torn or mixed file cannot pass for a whole one.
#include "store/PlistFile.h"

#include <QString>
#include <cstdio>

int main(int argc, char** argv) {
    if (argc != 2)
        return 2;
    const QString path = QString::fromLocal8Bit(argv[1]);
    for (qint64 generation = 0;; ++generation) {
        const int count = 200 + static_cast<int>(generation % 7) * 150;
        QVariantList items;
        for (int i = 0; i < count; ++i)
            items.append(generation);
        const QVariantMap content{{"generation", generation}, {"count", count}, {"items", items}};
        if (!ostrel::PlistFile::write(path, content))
            return 1;
        std::puts("written");
        std::fflush(stdout);
    }
}
