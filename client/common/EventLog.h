#pragma once

#include <QFile>
#include <QFrame>

class QPlainTextEdit;

/// The log of all that happens, newest line last, with its time. It keeps the last thousand lines.
class EventLog : public QFrame
{
    Q_OBJECT

public:
    explicit EventLog(QWidget* parent = nullptr);

    /// Also appends every line to a file, flushed at once. False if it can't be opened.
    bool writeTo(const QString& path);

    /// Adds a line: who it comes from, such as "live", and what happened.
    void add(const QString& origin, const QString& text);

private:
    QPlainTextEdit* m_text;
    QFile m_file;
};
