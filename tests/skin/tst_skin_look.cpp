#include "SkinTree.h"
#include "deck/CPaneDeck.h"
#include "layouts/CSegmentationDialog.h"
#include "layouts/CSplitCatalog.h"
#include "layouts/CSplitCustomDialog.h"
#include "support/DeckTestCase.h"
#include "support/Pixels.h"
#include "toolbars/CMonitorToolBar.h"
#include "toolbars/CPlaybackToolBar.h"

#include <QAbstractButton>
#include <QMouseEvent>
#include <QToolTip>

namespace {

using Maker = QWidget* (*)();

template <class Widget> QWidget* Make()
{
    return new Widget(nullptr);
}

CPaneDeck* MakeDeck()
{
    auto* deck = new CPaneDeck(nullptr, WND_TYPE_MONITOR, 1);
    deck->resize(600, 300);
    deck->SetShowWndNo(1);
    return deck;
}

QWidget* MakeDeckWithTitleBar()
{
    CPaneDeck* deck = MakeDeck();
    deck->showTitle(0);
    deck->setTitleMousMsg(true, 0);
    return deck;
}

QWidget* MakeInstantPlaybackBar()
{
    CPaneDeck* deck = MakeDeck();
    deck->OpenPlayBackSlider(0);
    return deck;
}

/// Several bars of a deck have a button of the same name.
QAbstractButton* VisibleButton(QWidget* widget, const QString& name)
{
    for (QAbstractButton* button : widget->findChildren<QAbstractButton*>(name)) {
        if (button->isVisible())
            return button;
    }
    return nullptr;
}

/// A button's picture in its place, so that what lies below a translucent plate counts.
QImage PictureOf(QWidget* button)
{
    QWidget* window = button->window();
    const QRect place(button->mapTo(window, QPoint()), button->size());
    return window->grab(place).toImage();
}

void SetHovered(QWidget* button, bool hovered)
{
    button->setAttribute(Qt::WA_UnderMouse, hovered);
    const QPointF place = hovered ? QPointF(button->rect().center()) : QPointF(-5, -5);
    QMouseEvent move(QEvent::MouseMove, place, button->mapToGlobal(place.toPoint()), Qt::NoButton,
                     Qt::NoButton, Qt::NoModifier);
    QApplication::sendEvent(button, &move);
}

QMap<QString, QImage> PicturesByState(QAbstractButton* button)
{
    QMap<QString, QImage> pictures;
    pictures["normal"] = PictureOf(button);
    SetHovered(button, true);
    pictures["hover"] = PictureOf(button);
    button->setDown(true);
    pictures["pressed"] = PictureOf(button);
    button->setDown(false);
    SetHovered(button, false);
    button->setEnabled(false);
    pictures["disabled"] = PictureOf(button);
    button->setEnabled(true);
    if (!button->isCheckable())
        return pictures;
    button->setChecked(true);
    pictures["checked"] = PictureOf(button);
    return pictures;
}

/// How many pixels of two pictures an eye without colours tells apart.
int DifferentPixels(const QImage& first, const QImage& second)
{
    return CountPixels(first, [&](int x, int y) {
        return SkinTree::Contrast(first.pixelColor(x, y), second.pixelColor(x, y)) >= 1.15;
    });
}

void UseStyle(int style)
{
    CSplitCatalog::Release();
    CSplitCatalog* catalog = CSplitCatalog::Instance();
    catalog->styleId = style;
    catalog->resourceDir = SkinTree::Path(SkinTree::Styles().at(style - 1));
    catalog->qssDir = catalog->resourceDir + "/Qss";
    catalog->LoadLayouts();
}

} // namespace

Q_DECLARE_METATYPE(Maker)

class tst_skin_look : public DeckTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void buttonsShowTheirStates_data();
    void buttonsShowTheirStates();
    void toolTipIsReadable();
};

void tst_skin_look::buttonsShowTheirStates_data()
{
    QTest::addColumn<int>("style");
    QTest::addColumn<Maker>("make");
    QTest::addColumn<QStringList>("buttons");
    const QStringList live = {"btnSaveView",   "btnSignalFrame", "btnFourFrame",    "btnSixFrame",
                              "btnEightFrame", "btnNineFrame",   "btnSixteenFrame", "btmMoreFrame",
                              "btnPrive",      "btnNext",        "btnPVplayer"};
    const QStringList title = {"btnRemoteControl", "btnLocalRecord", "btnsnapshot", "btnAudio",
                               "btninstant",       "btnZoomIn",      "btnclose"};
    const QStringList playback = {"m_downloadBtn", "m_openBtn",  "m_screenshotBtn", "m_saveBtn",
                                  "m_clipBtn",     "m_slowBtn",  "m_playBtn",       "m_stopBtn",
                                  "m_quickBtn",    "m_audioBtn", "m_btn1",          "m_btn4",
                                  "m_btn6",        "m_btn8",     "m_btn9",          "btnPVplayer"};
    for (int style : {1, 2}) {
        const QString skin = style == 1 ? "dark" : "light";
        const auto row = [&](const char* name, Maker make, const QStringList& buttons) {
            QTest::newRow(qPrintable(skin + " " + name)) << style << make << buttons;
        };
        row("live toolbar", Make<CMonitorToolBar>, live);
        row("title bar", MakeDeckWithTitleBar, title);
        row("instant playback bar", MakeInstantPlaybackBar, {"btnStop", "btnclose"});
        row("playback toolbar", Make<CPlaybackToolBar>, playback);
        row("dialog", Make<CSegmentationDialog>, {"close"});
        row("picker", Make<CSplitCustomDialog>, {"btnN1", "btnC10", "btnEditSplit"});
    }
}

void tst_skin_look::buttonsShowTheirStates()
{
    QFETCH(int, style);
    QFETCH(Maker, make);
    QFETCH(QStringList, buttons);
    UseStyle(style);
    const ExpectedWarning strip(
        "Specified color without alpha value but alpha given: 'rgb 255, 255, 255,255'");
    const ExpectedWarning tabs("Unknown color name '#transparent'");
    const ExpectedWarning viewButton("Could not create pixmap from");
    const QScopedPointer<QWidget> widget(make());
    widget->show();
    for (const QString& name : buttons) {
        QAbstractButton* button = VisibleButton(widget.data(), name);
        QVERIFY2(button, qPrintable(name));
        const QMap<QString, QImage> pictures = PicturesByState(button);
        for (auto first = pictures.begin(); first != pictures.end(); ++first) {
            for (auto second = std::next(first); second != pictures.end(); ++second) {
                const int different = DifferentPixels(*first, *second);
                QVERIFY2(different >= 8, qPrintable(QString("%1: %2 and %3 differ in %4 pixels")
                                                        .arg(name, first.key(), second.key())
                                                        .arg(different)));
            }
        }
    }
}

void tst_skin_look::toolTipIsReadable()
{
    for (int style : {1, 2}) {
        UseStyle(style);
        CMonitorToolBar bar(nullptr);
        bar.show();
        QToolTip::showText(QPoint(50, 50), "Full screen", &bar);
        QWidget* tip = nullptr;
        for (QWidget* window : QApplication::topLevelWidgets()) {
            if (window->objectName() == "qtooltip_label")
                tip = window;
        }
        QVERIFY(tip && tip->isVisible());
        const QImage image = tip->grab().toImage();
        const QImage text = image.copy(image.rect().adjusted(2, 2, -2, -2));
        const QColor ground = image.pixelColor(3, image.height() - 3);
        const auto isReadable = [&](int x, int y) {
            return SkinTree::Contrast(text.pixelColor(x, y), ground) >= 4.5;
        };
        QToolTip::hideText();
        QVERIFY2(CountPixels(text, isReadable) > 0, style == 1 ? "dark" : "light");
    }
}

QTEST_MAIN(tst_skin_look)

#include "tst_skin_look.moc"
