#pragma once

#include <QString>

#include <deque>

/// What a row of the device tree stands for. Its address lies on the row, and the type has to come first.
struct CameraRecord
{
    int type = 2; ///< 2 a camera, 1 a site, 0 a group
    QString name;
    QString address; ///< where the video comes from
    QString site;    ///< the site and the group it is shown under
    QString group;
};

/// The cameras of the client. Records stay where they are while the list lives.
class CameraList
{
public:
    /// The built-in synthetic cameras.
    void addSynthetic(int count);

    void add(const QString& name, const QString& address);

    int count() const { return int(m_records.size()); }
    const CameraRecord& at(int index) const { return m_records[size_t(index)]; }

    /// The camera of that name; null if there is none.
    const CameraRecord* find(const QString& name) const;

private:
    std::deque<CameraRecord> m_records;
};
