#include "playback/PlaybackKeys.h"

#include "common/Words.h"

#include <QMenu>
#include <QShortcut>
#include <QWidget>

namespace {

struct KeyCommand
{
    Qt::Key key;
    PlaybackKeys::Command command;
};

constexpr KeyCommand Keys[] = {
    {Qt::Key_Space, PlaybackKeys::PlayOrPause}, {Qt::Key_B, PlaybackKeys::TurnRound},
    {Qt::Key_Left, PlaybackKeys::Back},         {Qt::Key_Right, PlaybackKeys::Forward},
    {Qt::Key_Up, PlaybackKeys::Faster},         {Qt::Key_Down, PlaybackKeys::Slower},
    {Qt::Key_Home, PlaybackKeys::DayBegin},     {Qt::Key_End, PlaybackKeys::DayEnd},
    {Qt::Key_N, PlaybackKeys::NextMark},        {Qt::Key_P, PlaybackKeys::PreviousMark},
    {Qt::Key_E, PlaybackKeys::Export},
};

QString textOf(PlaybackKeys::Command command)
{
    switch (command) {
    case PlaybackKeys::PlayOrPause:
        return word("Play or pause");
    case PlaybackKeys::TurnRound:
        return word("Play backwards, or forwards again");
    case PlaybackKeys::Back:
        return word("10 s back; in a pause one picture");
    case PlaybackKeys::Forward:
        return word("10 s on; in a pause one picture");
    case PlaybackKeys::Faster:
        return word("Faster");
    case PlaybackKeys::Slower:
        return word("Slower");
    case PlaybackKeys::DayBegin:
        return word("First recording of the day");
    case PlaybackKeys::DayEnd:
        return word("Last recording of the day");
    case PlaybackKeys::NextMark:
        return word("Next motion or alarm");
    case PlaybackKeys::PreviousMark:
        return word("Previous motion or alarm");
    case PlaybackKeys::Export:
        return word("Export");
    }
    return QString();
}

} // namespace

PlaybackKeys::PlaybackKeys(QWidget* place) : QObject(place)
{
    place->setFocusPolicy(Qt::StrongFocus);
    for (const KeyCommand& key : Keys) {
        auto* shortcut = new QShortcut(key.key, place);
        shortcut->setContext(Qt::WidgetWithChildrenShortcut);
        shortcut->setAutoRepeat(key.command == Back || key.command == Forward);
        connect(shortcut, &QShortcut::activated, this, [this, key] { Q_EMIT pressed(key.command); });
    }
}

void PlaybackKeys::fillMenu(QMenu* menu)
{
    for (const KeyCommand& key : Keys)
        menu->addAction(textOf(key.command) + '\t' + QKeySequence(key.key).toString(QKeySequence::NativeText),
                        this, [this, key] { Q_EMIT pressed(key.command); });
}
