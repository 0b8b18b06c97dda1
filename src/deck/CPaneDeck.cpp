#include "deck/CPaneDeck.h"

#include "common/Installation.h"
#include "deck/DeckDrag.h"
#include "deck/DeckMore.h"
#include "deck/PageGeometry.h"
#include "layouts/CSplitCatalog.h"
#include "panes/AlarmMark.h"
#include "panes/CAlarmWidget.h"
#include "panes/CMonitorWidget.h"
#include "panes/CPlaybackWidget.h"
#include "panes/CTourWidget.h"
#include "panes/CVideoTitleWidget.h"
#include "panes/PaneAccessible.h"
#include "panes/QMyLabel.h"
#include "text/LangText.h"
#include "timeline/ScaleAccessible.h"
#include "timeline/ScaleWatch.h"
#include "toolbars/CMonitorToolBar.h"
#include "toolbars/CPlaybackToolBar.h"
#include "toolbars/CSkinConfig.h"

#include <QPointer>
#include <QResizeEvent>
#include <QtDebug>

namespace {

CVideoWidget* NewPane(int kind, QWidget* deck, int index)
{
    switch (kind) {
    case WND_TYPE_MONITOR:
        return new CMonitorWidget(deck, index);
    case WND_TYPE_ALARM:
        return new CAlarmWidget(deck, index);
    case WND_TYPE_PLAYBACK:
        return new CPlaybackWidget(deck, index);
    case WND_TYPE_TOUR:
        return new CTourWidget(deck, index);
    }
    return nullptr;
}

CMonitorToolBar* NewMonitorBar(QWidget* deck, int kind)
{
    auto* bar = new CMonitorToolBar(deck);
    if (kind == WND_TYPE_TOUR) {
        bar->UseFrameMenu();
        bar->HideTourButtons();
    }
    QObject::connect(bar, SIGNAL(changePageNum(int)), deck, SLOT(slot_changePageNo(int)));
    QObject::connect(bar, SIGNAL(changePageNum(int)), deck, SIGNAL(sig_wndNumberChanged(int)));
    if (kind == WND_TYPE_MONITOR) {
        QObject::connect(bar, SIGNAL(wndfullScreen()), deck, SLOT(slot_wndfullScreen()));
        QObject::connect(bar, SIGNAL(wndBtnClicked(Btn_type_EX)), deck,
                                     SLOT(slot_OnWndBtnClicked(Btn_type_EX)));
        QObject::connect(bar, SIGNAL(voiceChanged(int)), deck, SLOT(slot_VoiceChanged(int)));
    }
    QObject::connect(bar, SIGNAL(sig_btnWndSwidch(int,int)), deck, SLOT(slot_changePageNo(int,int)));
    QObject::connect(bar, SIGNAL(sig_LayoutEdited(int,bool)), deck, SIGNAL(sig_LayoutEdited(int,bool)));
    return bar;
}

CPlaybackToolBar* NewPlaybackBar(QWidget* deck)
{
    auto* bar = new CPlaybackToolBar(deck);
    QObject::connect(bar, SIGNAL(wndBtnClicked(Btn_type_EX)), deck, SLOT(slot_OnWndBtnClicked(Btn_type_EX)));
    QObject::connect(bar, SIGNAL(voiceChanged(int)), deck, SLOT(slot_VoiceChanged(int)));
    QObject::connect(bar, SIGNAL(wndfullScreen()), deck, SLOT(slot_wndfullScreen()));
    QObject::connect(bar, SIGNAL(playposeChanged(int)), deck, SLOT(slot_SliderMoved(int)));
    QObject::connect(bar, SIGNAL(sig_TimerSliderMoved()), deck, SLOT(slot_TimerSliderMoved()));
    QObject::connect(bar, SIGNAL(sig_TimerSliderDbClicked()), deck, SLOT(slot_TimerSliderDbClick()));
    const ScaleWatch* scale = bar->Watch();
    QObject::connect(scale, SIGNAL(sig_ViewChanged()), deck, SIGNAL(sig_DayRectChanged()));
    QObject::connect(scale, SIGNAL(sig_Pointed(int)), deck, SIGNAL(sig_TimePointed(int)));
    QObject::connect(scale, SIGNAL(sig_Dragged(int)), deck, SIGNAL(sig_TimeDragged(int)));
    return bar;
}

CVideoTitleWidget* NewTitle(QWidget* deck, int kind)
{
    auto* title = new CVideoTitleWidget(deck);
    title->raise();
    title->hide();
    if (kind == WND_TYPE_ALARM)
        title->SetStopOnly();
    if (kind == WND_TYPE_PLAYBACK)
        title->HideLiveButtons();
    return title;
}

/// Live and tour decks have the live toolbar, and their panes can be dragged onto each other.
bool IsLive(int kind)
{
    return kind == WND_TYPE_MONITOR || kind == WND_TYPE_TOUR;
}

void PlaceToolBar(QWidget* bar, const QRect& rect, bool shown)
{
    if (!bar)
        return;
    bar->setGeometry(rect);
    bar->setVisible(shown);
}

QString DeckStyleSheet()
{
    const CSplitCatalog* catalog = CSplitCatalog::Instance();
    const QString color = catalog->styleId == 1 ? "#191c20" : "#5c6576";
    return catalog->StyleSheet("/liveviewsheet.qss") + "QFrame{background-color:" + color + ";}";
}

} // namespace

CPaneDeck::CPaneDeck(QWidget* parent, _WND_TYPE type, int nCount)
    : QWidget(parent), m_nWndCount(nCount), m_eType(type), m_pMore(std::make_unique<DeckMore>(this))
{
    CSplitCatalog::Instance()->LoadLayouts();
    InstallPaneAccessible();
    InstallScaleAccessible();
    setAcceptDrops(false);
    m_disPlayRect = new QWidget(this);
    m_disPlayRect->setObjectName("m_disPlayRect");
    setMouseTracking(true);
    const AlarmPictureHold alarmPicture;
    for (int i = 0; i < nCount; ++i) {
        CVideoWidget* pane = NewPane(type, this, i);
        if (!pane)
            break;
        pane->m_eKind = type;
        pane->setVisible(false);
        m_listWnd.append(pane);
        if (!IsLive(type))
            continue;
        pane->installEventFilter(this);
        m_mapDrag[i] = 1;
    }
    if (IsLive(type))
        m_pMonitorBar = NewMonitorBar(this, type);
    if (type == WND_TYPE_PLAYBACK)
        m_pPlaybackBar = NewPlaybackBar(this);
    m_pTitle = NewTitle(this, type);
    setStyleSheet(DeckStyleSheet());
    installEventFilter(this);
}

CPaneDeck::~CPaneDeck()
{
    removeEventFilter(this);
    CSkinConfig::Release();
    qDebug("~CPaneDeck");
}

void CPaneDeck::SetInstallation(QString directory, QString writableDirectory)
{
    if (CSplitCatalog::Exists())
        qWarning("CPaneDeck: SetInstallation comes too late, a deck has been made");
    else
        ChooseInstallation(directory, writableDirectory);
}

void CPaneDeck::ChangeLook(int nStyle, QString strLanguageFile)
{
    ReplaceLanguageFile(strLanguageFile);
    CSplitCatalog::Instance()->ChooseStyle(nStyle);
    CSkinConfig::Release();
    QMyLabel::s_bBackgroundLoaded = false;
}

void CPaneDeck::SetLanguageFile(QString path)
{
    ::SetLanguageFile(path);
}

void CPaneDeck::resizeEvent(QResizeEvent* event)
{
    DeckState state;
    state.kind = m_eType;
    state.fullScreen = m_nFullScreen != 0;
    state.showMode = m_eShowMode;
    state.playbackBarHeight = m_pPlaybackBar ? m_pPlaybackBar->geometry().height() : 0;
    const DeckGeometry deck = GeometryOfDeck(state, geometry().size());
    PlaceToolBar(m_pMonitorBar, deck.toolBar, !state.fullScreen);
    PlaceToolBar(m_pPlaybackBar, deck.toolBar, !state.fullScreen);
    m_disPlayRect->setGeometry(deck.display);
    updatePages();
    QWidget::resizeEvent(event);
}

bool CPaneDeck::eventFilter(QObject* watched, QEvent* event)
{
    const bool consumed = QWidget::eventFilter(watched, event);
    const QPointer<CPaneDeck> alive(this);
    if (watched != this)
        DeckDrag::Follow(this, event);
    else if (event->type() == QEvent::WindowStateChange)
        Q_EMIT sig_OnStateChanged(windowState());
    if (alive)
        return consumed;
    // The watched object died with the deck: the event must go no further.
    event->accept();
    return true;
}

void CPaneDeck::SetActiveWnd(int nWndIndex)
{
    slot_setActiveWnd(nWndIndex);
}

void CPaneDeck::slot_setActiveWnd(int nWndIndex)
{
    const QPointer<CPaneDeck> alive(this);
    Q_EMIT sig_Activechangebefor(m_nActiveWnd);
    if (!alive || nWndIndex == m_nActiveWnd)
        return;
    if (CVideoWidget* pane = GetVideoWidget(nWndIndex))
        pane->SetActive(true);
    if (CVideoWidget* pane = GetVideoWidget(m_nActiveWnd))
        pane->SetActive(false);
    m_nActiveWnd = nWndIndex;
    Q_EMIT sig_activeWnd(nWndIndex);
}

int CPaneDeck::GetCurrentWnd()
{
    return m_nActiveWnd;
}

int CPaneDeck::activeWndNo()
{
    return m_nActiveWnd;
}

CVideoWidget* CPaneDeck::GetVideoWidget(int nWndIndex)
{
    return m_listWnd.value(nWndIndex);
}

void* CPaneDeck::GetHWND(int nWndIndex)
{
    CVideoWidget* pane = GetVideoWidget(nWndIndex);
    return pane ? pane->GetHWND() : nullptr;
}

void CPaneDeck::GetWindowRect(int nWndIndex, int& nWidth, int& nHeight)
{
    CVideoWidget* pane = GetVideoWidget(nWndIndex);
    if (!pane)
        return;
    nWidth = pane->geometry().width();
    nHeight = pane->geometry().height();
}
