// SPDX-License-Identifier: Apache-2.0
// Runs a fuzz target over every file of the directories that are named: the same code as when
// fuzzing, on inputs that are known.
#include "fuzz_support.h"

#include <QDir>
#include <QFile>

int main(int argc, char** argv)
{
    int count = 0;
    for (int i = 1; i < argc; ++i) {
        const QDir directory(argv[i]);
        for (const QString& name : directory.entryList(QDir::Files, QDir::Name)) {
            QFile file(directory.filePath(name));
            require(file.open(QIODevice::ReadOnly), "the seed can be read");
            fuzz(file.readAll());
            ++count;
        }
    }
    std::printf("%d inputs\n", count);
    return count > 0 ? 0 : 1;
}
