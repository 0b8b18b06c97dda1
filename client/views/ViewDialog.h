#pragma once

#include <QDialog>

class LiveTab;
class QLabel;
class QListWidget;
class QListWidgetItem;
class QPushButton;
class ViewList;

/// Shows the user's views in the menu's order, to be renamed, overwritten, moved and removed.
class ViewDialog : public QDialog
{
    Q_OBJECT

public:
    ViewDialog(ViewList* views, LiveTab* live);

Q_SIGNALS:
    /// What the tab shows is to be kept under that name, or the view to be shown in it.
    void overwriteAsked(const QString& name);
    void showAsked(const QString& name);

private:
    QPushButton* addButton(const QString& text, const char* name, void (ViewDialog::*press)());
    void fill();
    QString current() const;
    void rename();
    void takeName(QListWidgetItem* item);
    void overwrite();
    void showView();
    void remove();
    void share();
    void showButtons();
    void moveBy(int by);
    void moveUp();
    void moveDown();
    void tell(bool done, const QString& error);

    ViewList* m_views;
    LiveTab* m_live;
    QListWidget* m_list;
    QLabel* m_error;
    QVector<QPushButton*> m_buttons;
    QPushButton* m_share = nullptr;
};
