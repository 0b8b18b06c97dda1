#pragma once

#include "cameras/SourceAddress.h"

#include <deque>

/// What a row of the device tree stands for. The row holds where the record lies, and the type has to come
/// first.
struct CameraRecord
{
    int type = 2; ///< 2 a camera, 1 a site, 0 a group
    QString name;
    std::optional<SourceAddress> address; ///< where a camera's video comes from
    QString site;                         ///< the site and the group it is shown under
    QString group;
};

/// The cameras of the client. Records stay where they are while the list lives.
class CameraList
{
public:
    /// The built-in synthetic cameras.
    void addSynthetic(int count);

    void add(const SourceAddress& address);

    int count() const { return int(m_records.size()); }
    const CameraRecord& at(int index) const { return m_records[size_t(index)]; }

    /// The camera of that name; null if there is none.
    const CameraRecord* find(const QString& name) const;

private:
    std::deque<CameraRecord> m_records;
};
