#pragma once

#include "views/DeckView.h"

#include <QHash>
#include <QObject>

#include <functional>

/// The views that the user has kept under a name, in the order of the menu, and the second windows. They lie
/// in one file, which is written whole or not at all at each change. A file that can't be understood is left
/// where it is: then there are no views, and none can be kept.
class ViewList : public QObject
{
    Q_OBJECT

public:
    explicit ViewList(const QString& path, QObject* parent = nullptr);

    static QString userPath();

    /// False with a reason, in the user's words, if the file can't be understood. No file is no fault.
    bool read(QString* error);
    /// There was a file when it was read.
    bool wasKept() const { return m_wasKept; }

    /// The user's own, and behind them those that desks share.
    const QVector<DeckView>& views() const { return m_all; }
    /// The view of that name; null if there is none.
    const DeckView* find(const QString& name) const;
    /// The name of the one that was chosen last; empty for none.
    const QString& last() const { return m_kept.last; }
    /// The name of the one that every start shows; empty for the last one.
    const QString& start() const { return m_kept.start; }
    const QVector<WindowView>& windows() const { return m_kept.windows; }

    /// Why a view can't have that name, in the user's words; empty if it can.
    static QString faultOf(const QString& name);
    /// A name that no view has yet.
    QString newName() const;

    /// Each is false with a reason, in the user's words, and leaves all as it was.
    bool keep(const DeckView& view, QString* error); ///< in place of the one of its name
    bool rename(const QString& name, const QString& newName, QString* error);
    bool remove(const QString& name, QString* error);
    bool move(const QString& name, int by, QString* error);
    /// A view of one's own becomes one of all desks, or one of theirs one's own alone.
    bool setShared(const QString& name, bool shared, QString* error);
    bool setLast(const QString& name, QString* error);
    bool setStart(const QString& name, QString* error);
    bool setWindows(const QVector<WindowView>& windows, QString* error);

    /// Who keeps what desks share: it puts `view` in the place of the one called `before`, or removes that
    /// where there is none, or refuses with a reason. setShared() tells what comes of it.
    using Sharer = std::function<bool(const QString& before, const DeckView* view, QString* error)>;
    void shareBy(Sharer sharer) { m_sharer = std::move(sharer); }
    void setShared(const QVector<DeckView>& views);
    bool isShared(const QString& name) const { return m_sharedNames.contains(name); }
    bool canShare() const { return bool(m_sharer); }
    /// Whether the login may change what is shared; it may at first.
    void setSharing(bool may);
    bool mayShare() const { return m_mayShare; }

Q_SIGNALS:
    void changed();

private:
    /// What the file holds.
    struct Kept
    {
        QVector<DeckView> views;
        QString last;
        QString start;
        QVector<WindowView> windows;
    };

    void gather();
    int indexOf(const QString& name) const;
    bool take(const QByteArray& text);
    bool write(const Kept& next, QString* error);

    QString m_path;
    bool m_isRefused = false;
    bool m_wasKept = false;
    Kept m_kept;
    Sharer m_sharer; ///< none where there are no other desks
    bool m_mayShare = true;
    QVector<DeckView> m_shared;
    QHash<QString, QString> m_sharedNames; ///< by those that they have here, as an own one comes first
    QVector<DeckView> m_all;
};
