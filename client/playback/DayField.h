#pragma once

#include <QDateEdit>

/// The day whose recordings play, today at first, with a calendar to choose it from.
class DayField : public QDateEdit
{
    Q_OBJECT

public:
    explicit DayField(QWidget* parent = nullptr);
};
