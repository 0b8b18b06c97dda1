#include "Scratch.h"
#include "common/SettingsGuard.h"

#include <QSettings>

#include <algorithm>

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    SilenceQt();
    return 0;
}

// Settings that are let through hold words and bytes, and never an object, whose reading could take all
// memory.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    static Scratch scratch;
    const QString path = scratch.Write("client.conf", data, size);
    if (!isSafeSettings(path))
        return 0;
    const QSettings settings(path, QSettings::IniFormat);
    for (const QString& key : settings.allKeys()) {
        const QVariant value = settings.value(key);
        const auto isPlain = [](int type) {
            return type == QMetaType::UnknownType || type == QMetaType::QString ||
                   type == QMetaType::QByteArray;
        };
        bool isSafe = isPlain(value.userType()) || value.userType() == QMetaType::QStringList;
        if (value.userType() == QMetaType::QVariantList) {
            const QVariantList items = value.toList();
            isSafe = std::all_of(items.begin(), items.end(),
                                 [&](const QVariant& item) { return isPlain(item.userType()); });
        }
        if (!isSafe)
            abort();
    }
    return 0;
}
