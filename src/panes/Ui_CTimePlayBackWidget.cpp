#include "panes/Ui_CTimePlayBackWidget.h"

#include "common/CSeekSlider.h"
#include "common/FormParts.h"

#include <QGridLayout>
#include <QPushButton>

using namespace FormParts;

namespace {

QPushButton* NewButton(QWidget* parent, const char* name)
{
    auto* button = NewWidget<QPushButton>(parent, name);
    button->setFixedSize(24, 24);
    return button;
}

} // namespace

void Ui_CTimePlayBackWidget::setupUi(QWidget* bar)
{
    bar->setObjectName("CTimePlayBackWidget");
    bar->resize(596, 24);
    bar->setMaximumSize(QWIDGETSIZE_MAX, 600);
    bar->setWindowTitle("CTimePlayBackWidget");
    auto* outer = NewLayout<QGridLayout>(bar, "gridLayout_2", 0);
    auto* widget = NewWidget<QWidget>(bar, "widget");
    widget->setMaximumSize(QWIDGETSIZE_MAX, 60);
    outer->addWidget(widget, 0, 0);

    auto* row = NewLayout<QGridLayout>(widget, "gridLayout", 9);
    btnStop = NewButton(widget, "btnStop");
    btnStop->setCheckable(true);
    row->addWidget(btnStop, 0, 0);
    SdrTime = NewWidget<CSeekSlider>(widget, "SdrTime");
    SdrTime->setOrientation(Qt::Horizontal);
    SdrTime->setMaximum(1000);
    row->addWidget(SdrTime, 0, 1);
    btnclose = NewButton(widget, "btnclose");
    row->addWidget(btnclose, 0, 2);
}
