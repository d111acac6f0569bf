// Replays fuzz inputs through a fuzz target's entry point, without libFuzzer:
// every file in the folders named on the command line, in name order. The
// first folder (the corpus) must hold inputs; the others may be missing.
// A failing input aborts the process, as it does under the fuzzer.

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QStringList>

#include <cstdint>
#include <cstdio>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

int main(int argc, char** argv)
{
    int replayed = 0;
    for (int i = 1; i < argc; ++i) {
        const QDir folder(QFile::decodeName(argv[i]));
        const QStringList names = folder.entryList(QDir::Files, QDir::Name);
        for (const QString& name : names) {
            QFile file(folder.filePath(name));
            if (!file.open(QIODevice::ReadOnly)) {
                std::fprintf(stderr, "cannot read %s\n", qPrintable(file.fileName()));
                return 1;
            }
            const QByteArray bytes = file.readAll();
            std::fprintf(stderr, "%s\n", qPrintable(file.fileName()));
            LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.constData()), std::size_t(bytes.size()));
            ++replayed;
        }
        if (i == 1 && names.isEmpty()) {
            std::fprintf(stderr, "no inputs in %s\n", argv[i]);
            return 1;
        }
    }
    std::printf("%d inputs replayed\n", replayed);
    return 0;
}
