#include "playback/PlaybackKeys.h"

#include <QShortcut>
#include <QWidget>

namespace {

struct KeyCommand
{
    Qt::Key key;
    PlaybackKeys::Command command;
};

constexpr KeyCommand Keys[] = {
    {Qt::Key_Space, PlaybackKeys::PlayOrPause}, {Qt::Key_Left, PlaybackKeys::Back},
    {Qt::Key_Right, PlaybackKeys::Forward},     {Qt::Key_Up, PlaybackKeys::Faster},
    {Qt::Key_Down, PlaybackKeys::Slower},       {Qt::Key_Home, PlaybackKeys::DayBegin},
    {Qt::Key_End, PlaybackKeys::DayEnd},        {Qt::Key_N, PlaybackKeys::NextMark},
    {Qt::Key_P, PlaybackKeys::PreviousMark},    {Qt::Key_E, PlaybackKeys::Export},
};

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
