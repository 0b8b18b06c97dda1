#pragma once

#include <QDialog>
#include <QPair>
#include <QVector>

class QMenuBar;
class QTreeWidget;

/// All keys of the client and what they do.
class KeysWindow : public QDialog
{
    Q_OBJECT

public:
    using Keys = QVector<QPair<QString, QString>>;

    explicit KeysWindow(QWidget* parent);

    /// Under a heading: keys, and what they do.
    void addKeys(const QString& heading, const Keys& keys);
    /// Those of the actions in a bar's menus.
    void addActions(const QString& heading, const QMenuBar* bar);

    /// Those of the playback tab.
    static Keys playback();
    static Keys layoutEditor();

private:
    QTreeWidget* m_list;
};
