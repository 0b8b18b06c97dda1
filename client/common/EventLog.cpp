#include "common/EventLog.h"

#include "common/OneLine.h"

#include <QPlainTextEdit>
#include <QTime>
#include <QVBoxLayout>

EventLog::EventLog(QWidget* parent) : QFrame(parent), m_text(new QPlainTextEdit(this))
{
    setObjectName("EventLog");
    m_text->setReadOnly(true);
    m_text->setMaximumBlockCount(1000);
    m_text->setLineWrapMode(QPlainTextEdit::NoWrap);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_text);
}

bool EventLog::writeTo(const QString& path)
{
    m_file.setFileName(path);
    return m_file.open(QIODevice::WriteOnly | QIODevice::Append);
}

void EventLog::add(const QString& origin, const QString& text)
{
    const QString line = oneLine(origin + ": " + text);
    m_text->appendPlainText(QTime::currentTime().toString("HH:mm:ss.zzz  ") + line);
    if (!m_file.isOpen())
        return;
    m_file.write(line.toUtf8() + '\n');
    m_file.flush();
}
