#include "Scene.h"

#include "DeckScenes.h"
#include "Stage.h"

#include "layouts/CSegmentationDialog.h"
#include "layouts/CSplitCatalog.h"
#include "layouts/CSplitCustomDialog.h"
#include "timeline/CPlaybackSliderWidget.h"
#include "timeline/CTimerSlider.h"
#include "toolbars/CMonitorToolBar.h"
#include "toolbars/CPlaybackToolBar.h"

#include <QAbstractButton>
#include <QApplication>
#include <QMenu>
#include <QPainter>
#include <QToolButton>
#include <QToolTip>
#include <QWheelEvent>

namespace {

/// Every button of a bar in one state: 0 normal, 1 hover, 2 pressed, 3 checked, 4 disabled.
template <class Bar> QPixmap BarInState(int state, const QSize& size)
{
    Bar bar(nullptr);
    bar.resize(size);
    for (QAbstractButton* button : bar.template findChildren<QAbstractButton*>()) {
        if (button->window() != &bar)
            continue;
        if (state == 1)
            Stage::Hover(button);
        if (state == 2)
            button->setDown(true);
        if (state == 3)
            button->setChecked(true);
        if (state == 4)
            button->setEnabled(false);
    }
    return Stage::Shot(&bar);
}

template <class Bar> QPixmap BarStates(const QSize& size)
{
    QVector<QPixmap> rows;
    for (int state = 0; state < 5; ++state)
        rows.append(BarInState<Bar>(state, size));
    return Stage::Column(rows, 10);
}

QPixmap LiveToolBar()
{
    return BarStates<CMonitorToolBar>(QSize(760, 50));
}

QPixmap PlaybackToolBar()
{
    return BarStates<CPlaybackToolBar>(QSize(1000, 90));
}

QPixmap Picker()
{
    CSplitCustomDialog picker(nullptr);
    if (QWidget* button = picker.findChild<QWidget*>("btnN3"))
        Stage::Hover(button);
    return Stage::Shot(&picker);
}

/// The more button's menu in a tour deck, and a tool tip.
QPixmap MenuAndToolTip()
{
    CMonitorToolBar bar(nullptr);
    bar.UseFrameMenu();
    Stage::Shot(&bar);
    QMenu* menu = bar.findChild<QToolButton*>("btmMoreFrame")->menu();
    menu->actions().at(1)->setChecked(true);
    menu->setActiveAction(menu->actions().at(2));
    const QPixmap open = Stage::Shot(menu);
    auto* button = bar.findChild<QToolButton*>("btnSaveView");
    QToolTip::showText(QPoint(40, 40), button->toolTip(), button);
    QPixmap tip;
    for (QWidget* window : QApplication::topLevelWidgets()) {
        if (window->objectName() == "qtooltip_label")
            tip = window->grab();
    }
    QToolTip::hideText();
    return Stage::Column({open, tip}, 16);
}

/// Every cursor over a light and a dark picture.
QPixmap Cursors()
{
    const QStringList names = {"ptzleftup", "ptzup",       "ptzrightup", "ptzleft",      "ptzcenter",
                               "ptzright",  "ptzleftdown", "ptzdown",    "ptzrightdown", "window_Drag"};
    const double ratio = qApp->devicePixelRatio();
    QPixmap sheet(QSize(52 * names.size(), 104) * ratio);
    sheet.setDevicePixelRatio(ratio);
    QPainter painter(&sheet);
    painter.drawImage(QRect(0, 0, 52 * names.size(), 52), Stage::CameraPicture(0), QRect(0, 0, 640, 90));
    painter.drawImage(QRect(0, 52, 52 * names.size(), 52), Stage::CameraPicture(3), QRect(0, 200, 640, 90));
    for (int i = 0; i < names.size(); ++i) {
        const QImage cursor(CSplitCatalog::Instance()->resourceDir + "/VideoWidget/" + names.at(i) + ".png");
        for (int row : {0, 1})
            painter.drawImage(i * 52 + 10, row * 52 + 10, cursor);
    }
    return sheet;
}

/// The dialog with the mouse at a place of the editor, given in cells of its grid of 6 by 6.
QPixmap DialogAt(double x, double y)
{
    CSegmentationDialog dialog(nullptr);
    QMetaObject::invokeMethod(dialog.findChild<QWidget*>("tab3"), "sig_clicked");
    Stage::Shot(&dialog);
    QWidget* editor = dialog.findChild<QWidget*>("SplitWidget");
    QCursor::setPos(editor->mapToGlobal(QPoint(int(editor->width() / 6 * x), int(editor->height() / 6 * y))));
    return Stage::Shot(&dialog);
}

/// The line that a click would add, and the one that it would take away.
QPixmap Dialog()
{
    return Stage::Column({DialogAt(1.5, 3), DialogAt(4, 1.5)}, 10);
}

/// Turns the wheel forward over the middle of what shows of the scale.
void ZoomIn(CTimerSlider* scale, int notches)
{
    const QPointF middle(scale->parentWidget()->width() / 2.0 - scale->x(), 10);
    QWheelEvent wheel(middle, scale->mapToGlobal(middle.toPoint()), QPoint(), QPoint(0, 120 * notches),
                      Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(scale, &wheel);
}

QPixmap Timeline()
{
    QVector<QPixmap> rows;
    for (int notches : {0, 1, 3, 5, 7, 20, 200}) {
        CPlaybackSliderWidget slider(nullptr);
        slider.resize(1000, 50);
        QVector<unsigned int> day = Stage::Recordings();
        slider.SetTimerPeriod(day.data());
        Stage::Shot(&slider);
        slider.SetTimerSliderPose(12, 0, 0);
        ZoomIn(slider.findChild<CTimerSlider*>(), notches);
        rows.append(Stage::Shot(&slider));
    }
    return Stage::Column(rows, 10);
}

} // namespace

QVector<Scene> Scenes()
{
    return {
        {"deck-live", DeckScenes::Live},
        {"deck-alarm", DeckScenes::Alarm},
        {"deck-playback", DeckScenes::Playback},
        {"deck-playback-file", DeckScenes::PlaybackFile},
        {"deck-tour", DeckScenes::Tour},
        {"title-bar", DeckScenes::TitleBar},
        {"instant-playback", DeckScenes::InstantPlayback},
        {"live-toolbar", LiveToolBar},
        {"playback-toolbar", PlaybackToolBar},
        {"picker", Picker},
        {"dialog", Dialog},
        {"menu-and-tool-tip", MenuAndToolTip},
        {"cursors", Cursors},
        {"timeline", Timeline},
    };
}
