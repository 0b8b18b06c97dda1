#pragma once

class CSplitButton;
class CSplitWidget;
class QBoxLayout;
class QLabel;
class QPushButton;
class QSpinBox;
class QWidget;

/// The form of the custom layout dialog: spin boxes above, a column of tabs on the left, the editor on the
/// right.
class Ui_CSegmentationDialog
{
public:
    static constexpr int TabCount = 10;

    QWidget* centralWidget = nullptr;
    QLabel* labRow = nullptr;
    QSpinBox* sbxRow = nullptr;
    QLabel* labCol = nullptr;
    QSpinBox* sbxCol = nullptr;
    QWidget* widget = nullptr;
    QWidget* widget1 = nullptr;
    CSplitButton* tab[TabCount] = {}; ///< "tab1" to "tab10"
    QWidget* widget2 = nullptr;
    CSplitWidget* SplitWidget = nullptr;
    QWidget* widget_3 = nullptr;
    QPushButton* btnOk = nullptr;
    QPushButton* btnCancel = nullptr;

    void setupUi(QWidget* form);

private:
    void AddSizeRow(QBoxLayout* column);
    void AddTabs(QBoxLayout* row);
    void AddEditor(QBoxLayout* row);
    void AddButtonRow(QBoxLayout* column);
};
