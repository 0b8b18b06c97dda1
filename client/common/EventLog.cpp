#include "common/EventLog.h"

#include <QPlainTextEdit>
#include <QTime>
#include <QVBoxLayout>

EventLog::EventLog(QWidget* parent) : QFrame(parent), m_pText(new QPlainTextEdit(this))
{
    setObjectName("EventLog");
    m_pText->setReadOnly(true);
    m_pText->setMaximumBlockCount(1000);
    m_pText->setLineWrapMode(QPlainTextEdit::NoWrap);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_pText);
}

bool EventLog::WriteTo(const QString& path)
{
    m_file.setFileName(path);
    return m_file.open(QIODevice::WriteOnly | QIODevice::Append);
}

void EventLog::Add(const QString& origin, const QString& text)
{
    const QString line = origin + ": " + text;
    m_pText->appendPlainText(QTime::currentTime().toString("HH:mm:ss.zzz  ") + line);
    if (!m_file.isOpen())
        return;
    m_file.write(line.toUtf8() + '\n');
    m_file.flush();
}
