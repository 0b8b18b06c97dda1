#pragma once

#include <QCheckBox>

/// Whether a password may go over a line that others can read. A tick asks first, and tells what it means.
class PlainConsent : public QCheckBox
{
    Q_OBJECT

public:
    explicit PlainConsent(bool isAllowed = false, QWidget* parent = nullptr);

private:
    void ask();
};
