#include "cameras/CameraList.h"

#include "common/Words.h"

namespace {

constexpr const char* SiteNames[] = {"North gate", "Warehouse", "Platform", "Offices"};
constexpr int CamerasPerSite = 16;

} // namespace

void CameraList::addSynthetic(int count)
{
    for (int i = 0; i < count; ++i) {
        const SourceAddress address = SourceAddress::synthetic(i + 1);
        const QString site = word(SiteNames[(i / CamerasPerSite) % 4]);
        m_records.push_back({2, address.name(), address, site, word("Synthetic cameras")});
    }
}

void CameraList::add(const SourceAddress& address)
{
    m_records.push_back({2, address.name(), address, word("Command line"), word("Sources")});
}

const CameraRecord* CameraList::find(const QString& name) const
{
    for (const CameraRecord& record : m_records) {
        if (record.name == name)
            return &record;
    }
    return nullptr;
}
