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

    enum class Level
    {
        Technical, ///< for who looks for a fault: in the file always, on screen only if that was asked for
        Note,
        Warning, ///< somebody may have to do something
    };

    /// Adds a line: who it comes from, such as "live", and what happened.
    void add(const QString& origin, const QString& text, Level level = Level::Note);

    /// Shows technical lines from now on, or no longer; not at first.
    void showTechnical(bool shown) { m_showsTechnical = shown; }

protected:
    void changeEvent(QEvent* event) override;

private:
    void takeDirection();
    void show(const QString& line, Level level);

    QPlainTextEdit* m_text;
    QFile m_file;
    bool m_showsTechnical = false;
};
