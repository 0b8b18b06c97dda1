#include "Scratch.h"
#include "text/CLanguageFile.h"

// A text never holds a "=", and what is stored can be read back.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    static Scratch scratch;
    CLanguageFile file(scratch.Write("language.ini", data, size));
    const QString key = "String/PaneDeck.Ok";
    if (file.GetValue(key).contains('='))
        abort();
    const QString stored = QString::fromLatin1(reinterpret_cast<const char*>(data), static_cast<int>(size));
    file.SetValue(stored, key);
    if (file.GetValue(stored) != key)
        abort();
    return 0;
}
