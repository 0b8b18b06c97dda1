#pragma once

#include <QDialog>

class CameraEdits;
class CameraList;
class QPushButton;
class QTreeWidget;
class QVBoxLayout;

/// All cameras in a table, in the list's order, of which several can be chosen at once.
class ManagerDialog : public QDialog
{
    Q_OBJECT

public:
    ManagerDialog(CameraList* cameras, CameraEdits* edits, QWidget* parent);

private:
    void showEvent(QShowEvent* event) override;
    void fitColumns();
    void addButtons(QVBoxLayout* column);
    QPushButton* addButton(QVBoxLayout* column, const QString& text, void (ManagerDialog::*slot)());
    void add();
    void addSeveral();
    void edit();
    void regroup();
    void switchOver();
    void remove();
    void moveUp();
    void moveDown();
    void fillLater();
    void fill();
    void update();
    QStringList chosen() const;
    bool mayChangeChosen() const;

    CameraList* m_cameras;
    CameraEdits* m_edits;
    QTreeWidget* m_table;
    QVector<QPushButton*> m_adding;
    QVector<QPushButton*> m_ofSome; ///< that need a choice
    QPushButton* m_edit = nullptr;
    bool m_isFillPending = false;
};
