#pragma once

#include <QObject>
#include <QVector>

class LiveTab;
class QAction;
class QMenu;
class QWidget;
class ViewList;

/// The views in a window's menu: each to be chosen, the first nine by Ctrl and a number, and what is shown to
/// be kept.
class ViewMenu : public QObject
{
    Q_OBJECT

public:
    /// Puts the views at the menu's start. They also go by keys while the deck fills the screen.
    ViewMenu(QMenu* menu, LiveTab* live, ViewList* views);

    /// Shows a view in the tab.
    void choose(const QString& name);

Q_SIGNALS:
    /// A view is shown from now on, or what is shown was kept as one.
    void chosen(const QString& name);
    /// One line for the log.
    void told(const QString& text);

private:
    void fill();
    void markShown();
    void save();
    void askForName();
    void saveAs(const QString& name);
    void keep(const QString& name);
    void manage();

    QMenu* m_menu;
    LiveTab* m_live;
    ViewList* m_views;
    QVector<QAction*> m_actions; ///< of the views, in their order
    QAction* m_end;              ///< what comes behind them
};
