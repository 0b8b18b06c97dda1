#include "toolbars/CMonitorToolBar.h"

#include "common/CToolButton.h"
#include "common/FormParts.h"
#include "layouts/CSplitCatalog.h"
#include "layouts/CSplitCustomDialog.h"
#include "text/LangText.h"

#include <QAction>
#include <QActionGroup>
#include <QMenu>
#include <QScopedPointer>

#include <algorithm>
#include <iterator>

namespace {

constexpr int FrameCounts[] = {1, 4, 6, 8, 9, 16};
constexpr int MenuCounts[] = {25, 36, 64};

/// Shows a mark that only the program sets: a click on it leaves the mark as it was.
class MarkedButton : public CToolButton
{
public:
    using CToolButton::CToolButton;

protected:
    void nextCheckState() override {}
};

} // namespace

struct CMonitorToolBar::Ui
{
    explicit Ui(QWidget* bar);

    QAction* ActionFor(int count) const;

    QToolButton* btnSaveView;
    QToolButton* btnFrame[std::size(FrameCounts)]; ///< in the order of FrameCounts
    QToolButton* btmMoreFrame;
    QToolButton* btnPrive;
    QToolButton* btnNext;
    QToolButton* btnPVplayer;
    QActionGroup* group;
    QScopedPointer<QMenu, QScopedPointerDeleteLater> menu; ///< may die in a signal of its own
};

namespace {

template <class Button = CToolButton>
QToolButton* MakeButton(QWidget* parent, const char* name, const char* toolTipKey = nullptr)
{
    auto* button = FormParts::NewWidget<Button>(parent, name);
    if (!toolTipKey)
        return button;
    button->setToolTip(LangText(toolTipKey));
    button->setAccessibleName(LangText(toolTipKey));
    return button;
}

} // namespace

CMonitorToolBar::Ui::Ui(QWidget* bar)
    : btnSaveView(MakeButton(bar, "btnSaveView", "PaneDeck.Save View")),
      btnFrame{MakeButton(bar, "btnSignalFrame"), MakeButton(bar, "btnFourFrame"),
               MakeButton(bar, "btnSixFrame"),    MakeButton(bar, "btnEightFrame"),
               MakeButton(bar, "btnNineFrame"),   MakeButton(bar, "btnSixteenFrame")},
      btmMoreFrame(MakeButton<MarkedButton>(bar, "btmMoreFrame", "PaneDeck.Coustom Split")),
      btnPrive(MakeButton(bar, "btnPrive", "PaneDeck.Prive page")),
      btnNext(MakeButton(bar, "btnNext", "PaneDeck.Next page")),
      btnPVplayer(MakeButton(bar, "btnPVplayer", "PaneDeck.full Screen")), group(new QActionGroup(bar)),
      menu(new QMenu)
{
    for (QToolButton* button : btnFrame)
        button->setMinimumHeight(19);
    btmMoreFrame->setMinimumHeight(19);
    btmMoreFrame->setPopupMode(QToolButton::InstantPopup);
    btmMoreFrame->setCheckable(true);
    for (int count : MenuCounts)
        menu->addAction(QString::number(count))->setData(count);
}

QAction* CMonitorToolBar::Ui::ActionFor(int count) const
{
    for (QAction* action : group->actions()) {
        if (action->data().toInt() == count)
            return action;
    }
    return nullptr;
}

CMonitorToolBar::CMonitorToolBar(QWidget* parent)
    : QFrame(parent), ui(new Ui(this)), m_pSplitDialog(nullptr), m_pLayout(nullptr), m_pCheckedBtn(nullptr)
{
    setStyleSheet(CSplitCatalog::Instance()->StyleSheet("/liveviewsheet.qss") +
                  "QFrame{background-color: transparent;}");
    m_pSplitDialog = new CSplitCustomDialog(this);
    connect(m_pSplitDialog, SIGNAL(sig_btnWndSwidch(int,int)), this, SIGNAL(sig_btnWndSwidch(int,int)));
    connect(m_pSplitDialog, SIGNAL(sig_LayoutEdited(int,bool)), this, SIGNAL(sig_LayoutEdited(int,bool)));
    BuildRow();
    connect(ui->group, SIGNAL(triggered(QAction*)), this, SLOT(onFrameButtonClick(QAction*)));
    for (QToolButton* button :
         {ui->btnPrive, ui->btnNext, ui->btnSaveView, ui->btnPVplayer, ui->btmMoreFrame})
        connect(button, SIGNAL(clicked()), this, SLOT(OnWndBtnClicked()));
    setMouseTracking(true);
}

CMonitorToolBar::~CMonitorToolBar() = default;

void CMonitorToolBar::BuildRow()
{
    m_pLayout = new QHBoxLayout(this);
    m_pLayout->setContentsMargins(15, 0, 25, 0);
    m_pLayout->addWidget(ui->btnSaveView);
    m_pLayout->addStretch(1);
    for (size_t i = 0; i < std::size(FrameCounts); ++i) {
        auto* action = new QAction(ui->group);
        action->setData(FrameCounts[i]);
        ui->btnFrame[i]->setDefaultAction(action);
        ui->btnFrame[i]->setAccessibleName(LangText("%1 panes").arg(FrameCounts[i]));
        m_pLayout->addWidget(ui->btnFrame[i]);
    }
    for (QAction* action : ui->menu->actions())
        ui->group->addAction(action);
    for (QAction* action : ui->group->actions())
        action->setCheckable(true);
    // Pages follow each other to the right in every language, as the panes of one do.
    const bool mirrored = isRightToLeft();
    for (QToolButton* button : {ui->btmMoreFrame, mirrored ? ui->btnNext : ui->btnPrive,
                                mirrored ? ui->btnPrive : ui->btnNext, ui->btnPVplayer})
        m_pLayout->addWidget(button);
    for (QToolButton* button : findChildren<QToolButton*>(QString(), Qt::FindDirectChildrenOnly)) {
        if (button != ui->btnSaveView)
            button->setFocusPolicy(Qt::NoFocus);
    }
}

void CMonitorToolBar::addWidget(QWidget* w)
{
    insertWidget(1, w);
}

void CMonitorToolBar::insertWidget(int nIndex, QWidget* w)
{
    if (!w || w == this || w->isAncestorOf(this))
        return;
    m_pLayout->insertWidget(nIndex > m_pLayout->count() ? -1 : nIndex, w);
}

void CMonitorToolBar::UseFrameMenu()
{
    ui->btmMoreFrame->setMenu(ui->menu.data());
}

void CMonitorToolBar::HideTourButtons()
{
    for (QToolButton* button : {ui->btnSaveView, ui->btnPrive, ui->btnNext, ui->btnPVplayer})
        button->hide();
}

void CMonitorToolBar::SetShowWndNo(int nNum)
{
    if (m_pCheckedBtn)
        m_pCheckedBtn->setChecked(false);
    QAction* action = ui->ActionFor(nNum);
    if (!action && nNum != 49)
        return;
    const auto found = std::find(std::begin(FrameCounts), std::end(FrameCounts), nNum);
    m_pCheckedBtn =
        found == std::end(FrameCounts) ? ui->btmMoreFrame : ui->btnFrame[found - std::begin(FrameCounts)];
    m_pCheckedBtn->setChecked(true);
    if (action)
        action->setChecked(true);
}

void CMonitorToolBar::MarkCustom()
{
    if (m_pCheckedBtn)
        m_pCheckedBtn->setChecked(false);
    if (QAction* action = ui->group->checkedAction())
        action->setChecked(false);
    m_pCheckedBtn = ui->btmMoreFrame;
    m_pCheckedBtn->setChecked(true);
}

void CMonitorToolBar::onFrameButtonClick(QAction* action)
{
    if (action)
        Q_EMIT changePageNum(action->data().toInt());
}

void CMonitorToolBar::OnWndBtnClicked()
{
    const QObject* button = sender();
    if (!button)
        return;
    if (button == ui->btnPrive)
        Q_EMIT wndBtnClicked(BTN_PREV_PAGE);
    else if (button == ui->btnNext)
        Q_EMIT wndBtnClicked(BTN_NEXT_PAGE);
    else if (button == ui->btnPVplayer)
        Q_EMIT wndfullScreen();
    else if (button == ui->btnSaveView)
        Q_EMIT wndBtnClicked(BTN_SAVE_VIEW);
    else if (button == ui->btmMoreFrame)
        ShowPicker();
}

void CMonitorToolBar::ShowPicker()
{
    const QPoint pos = mapToGlobal(ui->btmMoreFrame->pos());
    m_pSplitDialog->move(pos.x() - 150, pos.y() - 250);
    m_pSplitDialog->show();
    m_pSplitDialog->setFocus();
}
