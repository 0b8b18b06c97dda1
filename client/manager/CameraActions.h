#pragma once

#include <QObject>

class CameraEdits;
class CameraList;
class CameraTree;
class QAction;
class QMenu;

/// What can be done with the list of cameras: from the menu, by the tree's own menu, and by keys in the tree.
class CameraActions : public QObject
{
    Q_OBJECT

public:
    CameraActions(CameraList* cameras, CameraTree* tree);

    /// Puts all of them into a menu.
    void fill(QMenu* menu) const;

    QAction* findAction() const { return m_find; }
    QAction* addAction() const { return m_add; }

public Q_SLOTS:
    void add();
    void addSynthetic();

Q_SIGNALS:
    /// What could not be done; one line.
    void failed(const QString& error);
    /// What was done without a question; one line.
    void told(const QString& line);

private Q_SLOTS:
    void find();
    void addSeveral();
    void exportAll();
    void edit();
    void remove();
    void switchOver();
    void sortByName();
    void manage();
    void takeDrop(const QString& id, const QString& group);

private:
    QAction* make(const QString& text, const QKeySequence& keys, void (CameraActions::*slot)());
    /// The ids of the cameras in the current row: of a group all of them.
    QStringList chosen() const;
    void showMenu();
    static void allow(QAction* action, bool hasSense, bool isAllowed);
    void update();

    CameraList* m_cameras;
    CameraTree* m_tree;
    CameraEdits* m_edits;
    QAction* m_manage;
    QAction* m_find;
    QAction* m_add;
    QAction* m_several;
    QAction* m_edit;
    QAction* m_remove;
    QAction* m_switch;
    QAction* m_sort;
    QAction* m_export;
};
