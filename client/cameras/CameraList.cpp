#include "cameras/CameraList.h"

#include "common/Words.h"

namespace {

const char* const SiteNames[] = {"North gate", "Warehouse", "Platform", "Offices"};
constexpr int CamerasPerSite = 16;

} // namespace

void CameraList::AddSynthetic(int count)
{
    for (int i = 0; i < count; ++i) {
        const QString name = QString("Camera %1").arg(i + 1, 2, 10, QLatin1Char('0'));
        const QString site = Word(SiteNames[(i / CamerasPerSite) % 4]);
        m_deqRecords.push_back(
            {2, name, QString("synthetic:%1").arg(i + 1), site, Word("Synthetic cameras")});
    }
}

void CameraList::Add(const QString& name, const QString& address)
{
    m_deqRecords.push_back({2, name, address, Word("Command line"), Word("Sources")});
}

const CameraRecord* CameraList::Find(const QString& name) const
{
    for (const CameraRecord& record : m_deqRecords) {
        if (record.name == name)
            return &record;
    }
    return nullptr;
}
