#pragma once

#include <QDate>
#include <QObject>

class ClientArchive;
class CPaneDeck;
class DayField;
class SegmentTrack;

/// The day of a playback deck: the field that chooses it, its recordings as colours on the deck's scale, and
/// the time that is chosen and shown there. Moments are milliseconds since 1970.
class DayScale : public QObject
{
    Q_OBJECT

public:
    DayScale(CPaneDeck* deck, const ClientArchive* archive, QObject* parent);

    /// For the caller to lay out.
    DayField* field() const { return m_field; }

    void setDay(const QDate& day);
    /// Shows the recordings of a camera, as they are now. Without a name the colours stay as they are.
    void showCamera(const QString& name);
    /// Brings the thumb to a moment, and the day with it, without dayChanged().
    void showMoment(qint64 ms);

    /// Midnight, and the next one.
    qint64 dayBegin() const;
    qint64 dayEnd() const;
    /// Where the day begins: with the first recording of a track in it, or else at midnight. The track may be
    /// null.
    qint64 firstMoment(const SegmentTrack* track) const;
    /// The moment of the day at which the clock shows a second, 0 to 86399.
    qint64 momentAt(int second) const;
    /// The moment of the day that the thumb was last brought to.
    qint64 chosenMoment() const;

Q_SIGNALS:
    void dayChanged(const QDate& day);

private:
    void takeDay(const QDate& day);
    void showColors();

    CPaneDeck* m_deck;
    const ClientArchive* m_archive;
    DayField* m_field;
    QString m_camera;
};
