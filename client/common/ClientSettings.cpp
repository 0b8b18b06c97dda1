#include "common/ClientSettings.h"

#include "common/ClientOptions.h"
#include "common/Languages.h"

#include <QSettings>

ClientSettings ClientSettings::load()
{
    const QSettings kept;
    ClientSettings settings;
    settings.language = chosenLanguage();
    settings.style = qBound(0, kept.value("style").toInt(), 2);
    settings.archiveDir = kept.value("archive/directory").toString();
    settings.archiveGigabytes =
        qBound(1, kept.value("archive/gigabytes", settings.archiveGigabytes).toInt(), MostGigabytes);
    settings.archiveDays = qBound(0, kept.value("archive/days").toInt(), MostDays);
    settings.usesDevices = kept.value("decode/devices", settings.usesDevices).toBool();
    settings.snapshotDir = kept.value("snapshots/directory").toString();
    settings.soundDevice = kept.value("sound/device").toString();
    settings.indexes = kept.value("fleet/indexes").toStringList();
    settings.showsSignals = kept.value("log/signals", settings.showsSignals).toBool();
    return settings;
}

ClientSettings ClientSettings::of(const ClientOptions& options)
{
    ClientSettings settings = load();
    if (!options.language.isEmpty())
        settings.language = options.language;
    if (!options.archiveDir.isEmpty())
        settings.archiveDir = options.archiveDir;
    settings.archiveGigabytes = options.archiveGigabytes.value_or(settings.archiveGigabytes);
    settings.archiveDays = options.archiveDays.value_or(settings.archiveDays);
    settings.usesDevices = options.usesDevices.value_or(settings.usesDevices);
    return settings;
}

void ClientSettings::saveChanges(const ClientSettings& before) const
{
    QSettings kept;
    const auto save = [&kept](const char* key, const auto& value, const auto& former) {
        if (value != former)
            kept.setValue(key, value);
    };
    if (language != before.language)
        chooseLanguage(language);
    save("style", style, before.style);
    save("archive/directory", archiveDir, before.archiveDir);
    save("archive/gigabytes", archiveGigabytes, before.archiveGigabytes);
    save("archive/days", archiveDays, before.archiveDays);
    save("decode/devices", usesDevices, before.usesDevices);
    save("snapshots/directory", snapshotDir, before.snapshotDir);
    save("sound/device", soundDevice, before.soundDevice);
    save("fleet/indexes", indexes, before.indexes);
    save("log/signals", showsSignals, before.showsSignals);
}

bool ClientSettings::hasArchiveOf(const ClientSettings& other) const
{
    return archiveDir == other.archiveDir && archiveGigabytes == other.archiveGigabytes &&
           archiveDays == other.archiveDays;
}
