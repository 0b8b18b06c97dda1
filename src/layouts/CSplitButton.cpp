#include "layouts/CSplitButton.h"

#include "layouts/CSplitCatalog.h"
#include "text/LangText.h"

#include <QLabel>
#include <QToolButton>

CSplitButton::CSplitButton(QWidget* parent) : QWidget(parent)
{
    ui.setupUi(this);
    connect(ui.btnpic, SIGNAL(clicked()), this, SIGNAL(sig_clicked()));
}

void CSplitButton::SetSelected(bool selected)
{
    ui.btnpic->setAccessibleDescription(selected ? LangText("selected") : QString());
    const bool dark = CSplitCatalog::Instance()->styleId == 1;
    if (selected) {
        setStyleSheet(QString("background-color:#%1;color:#ffffff;"
                              "QToolButton{border-image: url();background-color:transparent;}")
                          .arg(dark ? "e90202" : "2279c3"));
    } else {
        setStyleSheet(QString("background-color:#%1;color:#%2;"
                              "QToolButton{border-image: url();background-color:#transparent;}")
                          .arg(dark ? "222428" : "aeb6c5", dark ? "ffffff" : "000000"));
    }
}

void CSplitButton::SetPixmap(const QPixmap& pixmap)
{
    ui.btnpic->setIconSize(CSplitCatalog::Instance()->thumbnailSize);
    ui.btnpic->setIcon(pixmap);
}

void CSplitButton::SetText(const QString& text)
{
    ui.label->setText(text);
}

void CSplitButton::NameLayout(int number)
{
    ui.btnpic->setAccessibleName(LangText("Custom layout %1").arg(number));
}

void CSplitButton::mousePressEvent(QMouseEvent*)
{
    Q_EMIT sig_clicked();
}
