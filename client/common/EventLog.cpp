#include "common/EventLog.h"

#include "common/OneLine.h"
#include "common/Words.h"

#include <QEvent>
#include <QPlainTextEdit>
#include <QTextDocument>
#include <QTime>
#include <QVBoxLayout>

EventLog::EventLog(QWidget* parent) : QFrame(parent), m_text(new QPlainTextEdit(this))
{
    setObjectName("EventLog");
    m_text->setReadOnly(true);
    m_text->setAccessibleName(word("Event log"));
    m_text->setMaximumBlockCount(1000);
    takeDirection();
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_text);
}

/// Left to itself, the text begins at the left in every language.
void EventLog::takeDirection()
{
    m_text->setLineWrapMode(isRightToLeft() ? QPlainTextEdit::WidgetWidth : QPlainTextEdit::NoWrap);
    QTextOption option = m_text->document()->defaultTextOption();
    option.setAlignment(isRightToLeft() ? Qt::AlignRight : Qt::AlignLeft);
    m_text->document()->setDefaultTextOption(option);
}

void EventLog::changeEvent(QEvent* event)
{
    QFrame::changeEvent(event);
    if (event->type() == QEvent::LayoutDirectionChange)
        takeDirection();
}

bool EventLog::writeTo(const QString& path)
{
    m_file.setFileName(path);
    return m_file.open(QIODevice::WriteOnly | QIODevice::Append);
}

void EventLog::add(const QString& origin, const QString& text, Level level)
{
    const QString line = oneLine(origin + ": " + text);
    if (level != Level::Technical || m_showsTechnical)
        show(QTime::currentTime().toString("HH:mm:ss.zzz  ") + line, level);
    if (!m_file.isOpen())
        return;
    m_file.write(line.toUtf8() + '\n');
    m_file.flush();
}

void EventLog::show(const QString& line, Level level)
{
    QTextCharFormat format;
    if (level == Level::Warning)
        format.setFontWeight(QFont::Bold);
    else if (level == Level::Technical)
        format.setForeground(palette().brush(QPalette::Disabled, QPalette::WindowText));
    m_text->setCurrentCharFormat(format);
    m_text->appendPlainText(line);
}
