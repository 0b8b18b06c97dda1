#pragma once

#include "common/CSeekSlider.h"

#include <QGridLayout>
#include <QPushButton>

/// The form of the instant playback bar: pause button, position slider, close button.
class Ui_CTimePlayBackWidget
{
public:
    QPushButton* btnStop = nullptr;
    QSlider* SdrTime = nullptr;
    QPushButton* btnclose = nullptr;

    void setupUi(QWidget* bar)
    {
        bar->setObjectName("CTimePlayBackWidget");
        bar->resize(596, 24);
        bar->setMaximumSize(QWIDGETSIZE_MAX, 600);
        bar->setWindowTitle("CTimePlayBackWidget");
        QGridLayout* outer = NewGrid(bar, "gridLayout_2", 0);
        auto* widget = new QWidget(bar);
        widget->setObjectName("widget");
        widget->setMaximumSize(QWIDGETSIZE_MAX, 60);
        outer->addWidget(widget, 0, 0);
        QGridLayout* row = NewGrid(widget, "gridLayout", 9);
        btnStop = NewButton(widget, "btnStop");
        btnStop->setCheckable(true);
        row->addWidget(btnStop, 0, 0);
        SdrTime = new CSeekSlider(Qt::Horizontal, widget);
        SdrTime->setObjectName("SdrTime");
        SdrTime->setMaximum(1000);
        row->addWidget(SdrTime, 0, 1);
        btnclose = NewButton(widget, "btnclose");
        row->addWidget(btnclose, 0, 2);
    }

private:
    static QGridLayout* NewGrid(QWidget* parent, const char* name, int spacing)
    {
        auto* grid = new QGridLayout(parent);
        grid->setObjectName(name);
        grid->setSpacing(spacing);
        grid->setContentsMargins(0, 0, 0, 0);
        return grid;
    }

    static QPushButton* NewButton(QWidget* parent, const char* name)
    {
        auto* button = new QPushButton(parent);
        button->setObjectName(name);
        button->setFixedSize(24, 24);
        return button;
    }
};
