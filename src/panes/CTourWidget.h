#pragma once

#include "panes/CVideoWidget.h"

/// The status text of a tour through that many channels.
QString TourText(int nCount);

/// A pane of a tour deck. It never gets the title bar, and its frame label takes the drags of tours.
class CTourWidget : public CVideoWidget
{
    Q_OBJECT

public:
    CTourWidget(QWidget* parent, int nWndIndex);

    void setTour(int nCount);
};
