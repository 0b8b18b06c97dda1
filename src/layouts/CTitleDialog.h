#pragma once

#include <QDialog>
#include <QFrame>
#include <QLabel>
#include <QToolButton>

class QVBoxLayout;

/// A frameless dialog with a title bar of its own, which moves it when dragged.
class CTitleDialog : public QDialog
{
    Q_OBJECT

public:
    explicit CTitleDialog(QWidget* parent);

    void SetTitle(const QString& text);
    void SetCloseButtonVisible(bool visible);
    void AlignTitleLeft();

public Q_SLOTS:
    virtual void slot_Closewindow();
    void slot_Close();

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;

    /// Leaves the result of exec() alone.
    void closeEvent(QCloseEvent* event) override;

private:
    void BuildTitleBar();

    bool m_moving;
    QPoint m_windowPos; ///< of the dialog, at the last left press
    QPoint m_pressPos;  ///< of the cursor on the screen, at the last left press
    QFrame m_titleBar;
    QLabel m_titleLabel;
    QToolButton m_closeButton;
    QVBoxLayout* m_mainLayout;

protected:
    QVBoxLayout* m_contentLayout; ///< takes the content of a derived dialog
};
