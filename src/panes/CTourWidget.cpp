#include "panes/CTourWidget.h"

#include "text/LangText.h"

QString TourText(int nCount)
{
    return QString::number(nCount) + " " + LangText("channels");
}

CTourWidget::CTourWidget(QWidget* parent, int nWndIndex) : CVideoWidget(parent, nWndIndex)
{
    m_bTitle = false;
    SetTourKind();
}

void CTourWidget::setTour(int nCount)
{
    setText(TourText(nCount));
}
