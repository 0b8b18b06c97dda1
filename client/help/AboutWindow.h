#pragma once

#include <QDialog>

/// What this program is, and what it is made with under which licences.
class AboutWindow : public QDialog
{
    Q_OBJECT

public:
    explicit AboutWindow(QWidget* parent);
};
