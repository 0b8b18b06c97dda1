#pragma once

#include "archive/KeyPictures.h"
#include "playback/DayRows.h"

#include <QAbstractListModel>
#include <QCache>
#include <QPixmap>

/// Motion and alarms of the cameras shown, as they came in the day, with a small picture of each, which is
/// made only for rows that somebody looks at.
class MarkModel : public QAbstractListModel
{
    Q_OBJECT

public:
    struct Mark
    {
        QString camera;
        int pane = -1;
        Span span;

        bool operator==(const Mark& other) const;
    };

    static constexpr QSize PictureSize{96, 54};

    MarkModel(const DayRows* rows, const ClientArchive* archive, QObject* parent);

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    const Mark& at(int row) const { return m_marks[row]; }

    /// All of several rows in the order of their beginnings; what flickers counts as one, and so
    /// does an alarm with the motion that raised it.
    static QVector<Mark> marksOf(const QVector<DayRow>& rows);

private:
    void takeRows();
    void forgetMissing();
    void takePicture(const QString& key, qint64 ms, const QImage& picture);
    QPixmap pictureOf(const Mark& mark) const;
    static QString textOf(const Mark& mark);

    const DayRows* m_rows;
    const ClientArchive* m_archive;
    QVector<Mark> m_marks;
    mutable KeyPictures m_maker;
    mutable QCache<QPair<QString, qint64>, QPixmap> m_pictures;
    QVector<QPair<QString, qint64>> m_missing; ///< moments of which there was no picture
    QPixmap m_placeholder;
};
