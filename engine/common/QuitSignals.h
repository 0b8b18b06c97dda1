#pragma once

#include <QObject>

/// Lets the application quit, with all its farewells, when the system or the terminal asks it to: SIGTERM,
/// SIGINT, SIGHUP. Whoever asks a second time ends it at once. One for the program.
class QuitSignals : public QObject
{
    Q_OBJECT

public:
    explicit QuitSignals(QObject* parent = nullptr);
    ~QuitSignals() override;

private:
    void quit();
};
