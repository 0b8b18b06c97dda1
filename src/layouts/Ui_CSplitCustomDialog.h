#pragma once

class QBoxLayout;
class QLabel;
class QToolButton;
class QWidget;

/// The form of the layout picker: two groups of ten buttons, each in two rows, and the edit button below.
class Ui_CSplitCustomDialog
{
public:
    static constexpr int ButtonCount = 10;

    QWidget* MenuWidget = nullptr;
    QLabel* labNormal = nullptr;
    QToolButton* btnN[ButtonCount] = {}; ///< "btnN1" to "btnN10"
    QLabel* labCustom = nullptr;
    QToolButton* btnC[ButtonCount] = {}; ///< "btnC1" to "btnC10"
    QWidget* widget = nullptr;
    QToolButton* btnEditSplit = nullptr;

    void setupUi(QWidget* dialog);

private:
    QLabel* AddCaption(QBoxLayout* column, const char* name);
    void AddButtonRow(QBoxLayout* column, const char* name, const char* prefix, int first,
                      QToolButton** buttons);
    void AddEditRow(QBoxLayout* column);
};
