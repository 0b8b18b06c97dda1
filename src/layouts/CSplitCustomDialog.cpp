#include "layouts/CSplitCustomDialog.h"

#include "layouts/CSegmentationDialog.h"
#include "layouts/CSplitCatalog.h"
#include "text/LangText.h"

#include <QLabel>
#include <QMouseEvent>
#include <QPointer>
#include <QToolButton>

#include <algorithm>
#include <iterator>

namespace {

const QSize ThumbnailSize(30, 30);

int IndexOf(const QObject* sender, QToolButton* const (&buttons)[CSplitCatalog::LayoutCount])
{
    const auto found = std::find(std::begin(buttons), std::end(buttons), sender);
    return found == std::end(buttons) ? -1 : int(found - std::begin(buttons));
}

void ShowLayout(QToolButton* button, int type, int index)
{
    const CSplitCatalog* catalog = CSplitCatalog::Instance();
    const QString count = LangText("%1 panes").arg(catalog->Layout(type, index).count);
    const QString number = LangText("Custom layout %1").arg(index + 1);
    button->setIcon(catalog->LayoutThumbnail(type, index, "#5c6576", "#eeeeee"));
    button->setAccessibleName(type == 0 ? count : number + ", " + count);
}

} // namespace

CSplitCustomDialog::CSplitCustomDialog(QWidget* parent) : QWidget(parent)
{
    ui.setupUi(this);
    setWindowFlags(Qt::Window | Qt::FramelessWindowHint | Qt::Popup);
    setStyleSheet(CSplitCatalog::Instance()->StyleSheet("/liveviewsheet.qss"));
    ui.labNormal->setText(LangText("PaneDeck.Normal Split"));
    ui.labCustom->setText(LangText("PaneDeck.Custom Split"));
    CSplitCatalog::Instance()->thumbnailSize = ThumbnailSize;
    for (int i = 0; i < CSplitCatalog::LayoutCount; ++i) {
        ui.btnN[i]->setIconSize(ThumbnailSize);
        ui.btnC[i]->setIconSize(ThumbnailSize);
    }
    SetIcons(0);
    ui.btnEditSplit->setToolTip(LangText("PaneDeck.Edit split"));
    ui.btnEditSplit->setAccessibleName(LangText("PaneDeck.Edit split"));
    slot_setbtnCIcon();
    setMouseTracking(true);
    connect(ui.btnEditSplit, SIGNAL(clicked()), this, SLOT(btnEditclicked()));
    for (int i = 0; i < CSplitCatalog::LayoutCount; ++i) {
        connect(ui.btnN[i], SIGNAL(clicked()), this, SLOT(slot_btnWndSwidch()));
        connect(ui.btnC[i], SIGNAL(clicked()), this, SLOT(slot_btnWndSwidch()));
    }
}

void CSplitCustomDialog::btnEditclicked()
{
    hide();
    CSegmentationDialog dialog(nullptr);
    // The picker may be gone when this returns.
    dialog.exec();
}

void CSplitCustomDialog::slot_btnWndSwidch()
{
    const int normal = IndexOf(sender(), ui.btnN);
    const int custom = IndexOf(sender(), ui.btnC);
    const int type = custom < 0 ? 0 : 1;
    const int no = qMax(0, type == 0 ? normal : custom);
    const QPointer<CSplitCustomDialog> alive(this);
    Q_EMIT sig_btnWndSwidch(type, no);
    if (alive)
        hide();
}

void CSplitCustomDialog::slot_setbtnCIcon()
{
    CSplitCatalog::Instance()->thumbnailSize = ThumbnailSize;
    SetIcons(1);
}

void CSplitCustomDialog::mousePressEvent(QMouseEvent* event)
{
    setAttribute(Qt::WA_NoMouseReplay);
    QWidget::mousePressEvent(event);
}

void CSplitCustomDialog::focusOutEvent(QFocusEvent*)
{
    hide();
}

void CSplitCustomDialog::showEvent(QShowEvent*)
{
    setFocus();
    slot_setbtnCIcon();
}

void CSplitCustomDialog::SetIcons(int type)
{
    const auto& buttons = type == 0 ? ui.btnN : ui.btnC;
    for (int i = 0; i < CSplitCatalog::LayoutCount; ++i)
        ShowLayout(buttons[i], type, i);
}
