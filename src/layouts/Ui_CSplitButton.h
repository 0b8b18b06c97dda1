#pragma once

class QFrame;
class QLabel;
class QToolButton;
class QWidget;

/// The form of a tab button: a thumbnail and a text on a coloured strip.
class Ui_CSplitButton
{
public:
    QFrame* frame = nullptr;
    QToolButton* btnpic = nullptr;
    QLabel* label = nullptr;

    void setupUi(QWidget* button);
};
