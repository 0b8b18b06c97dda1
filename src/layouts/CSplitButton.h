#pragma once

#include "layouts/Ui_CSplitButton.h"

#include <QWidget>

/// A tab of the custom layout dialog. A press anywhere on it counts as a click, one on its thumbnail at the
/// release.
class CSplitButton : public QWidget
{
    Q_OBJECT

public:
    explicit CSplitButton(QWidget* parent);

    void SetSelected(bool selected);
    void SetPixmap(const QPixmap& pixmap);
    void SetText(const QString& text);

    /// Says to who can't see the thumbnail which custom layout it shows.
    void NameLayout(int number);

Q_SIGNALS:
    void sig_clicked();

protected:
    void mousePressEvent(QMouseEvent* event) override;

private:
    Ui_CSplitButton ui;
};
