#pragma once

#include <QStringList>

struct ClientOptions;

/// What the user has chosen for good, but for what a room of the client keeps for itself.
struct ClientSettings
{
    static constexpr int MostGigabytes = 1'000'000;
    static constexpr int MostDays = 36'500;

    QString language = "en";
    int style = 0;             ///< 1 dark, 2 light, 0 that of the installation
    QString archiveDir;        ///< empty for the user's data directory
    int archiveGigabytes = 8;  ///< how much recordings may take
    int archiveDays = 0;       ///< how old they may become; 0 for any age
    bool usesDevices = true;   ///< decodes by devices where there are any
    QString snapshotDir;       ///< empty for the user's pictures
    QString soundDevice;       ///< empty for the system's choice
    QStringList indexes;       ///< of several recorders, as --index takes them; none for cameras of one's own
    bool showsSignals = false; ///< the log shows what decks tell, word by word

    static ClientSettings load();
    /// Those that are kept, but for what the command line asks for.
    static ClientSettings of(const ClientOptions& options);
    /// Keeps what is not as before.
    void saveChanges(const ClientSettings& before) const;
    /// True if both want recordings at one place, by the same limits.
    bool hasArchiveOf(const ClientSettings& other) const;
};
