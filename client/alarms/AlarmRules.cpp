#include "alarms/AlarmRules.h"

#include <QSettings>

namespace {

constexpr char Group[] = "alarms";

QTime timeOf(const QSettings& settings, const char* key, const QTime& usual)
{
    const QTime time = QTime::fromString(settings.value(key).toString(), Qt::ISODate);
    return time.isValid() ? time : usual;
}

} // namespace

bool AlarmRules::isQuiet(const QTime& time) const
{
    if (!hasQuietTime)
        return false;
    if (quietFrom < quietTo)
        return time >= quietFrom && time < quietTo;
    return time >= quietFrom || time < quietTo;
}

AlarmRules AlarmRules::load()
{
    QSettings settings;
    settings.beginGroup(Group);
    AlarmRules rules;
    rules.hasSound = settings.value("sound", rules.hasSound).toBool();
    rules.hasNotice = settings.value("notice", rules.hasNotice).toBool();
    rules.hasQuietTime = settings.value("quiet", rules.hasQuietTime).toBool();
    rules.quietFrom = timeOf(settings, "quietFrom", rules.quietFrom);
    rules.quietTo = timeOf(settings, "quietTo", rules.quietTo);
    rules.offCameras = settings.value("off").toStringList();
    return rules;
}

void AlarmRules::save() const
{
    QSettings settings;
    settings.beginGroup(Group);
    settings.setValue("sound", hasSound);
    settings.setValue("notice", hasNotice);
    settings.setValue("quiet", hasQuietTime);
    settings.setValue("quietFrom", quietFrom.toString(Qt::ISODate));
    settings.setValue("quietTo", quietTo.toString(Qt::ISODate));
    settings.setValue("off", offCameras);
}
