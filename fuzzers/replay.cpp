#include <QDirIterator>
#include <QFile>

#include <cstdint>
#include <cstdio>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);
/// Not every target has one.
extern "C" [[gnu::weak]] int LLVMFuzzerInitialize(int* argc, char*** argv);

/// Gives each file below the directories to a target, as a fuzzer would. A directory without any is a fault.
int main(int argc, char** argv)
{
    if (LLVMFuzzerInitialize)
        LLVMFuzzerInitialize(&argc, &argv);
    for (int i = 1; i < argc; ++i) {
        int count = 0;
        for (QDirIterator it(QFile::decodeName(argv[i]), QDir::Files); it.hasNext(); ++count) {
            QFile file(it.next());
            if (!file.open(QIODevice::ReadOnly))
                return 1;
            const QByteArray content = file.readAll();
            LLVMFuzzerTestOneInput(reinterpret_cast<const uint8_t*>(content.constData()),
                                   size_t(content.size()));
        }
        std::printf("%d files of %s\n", count, argv[i]);
        if (count == 0)
            return 1;
    }
    return 0;
}
