#pragma once

#include <QWidget>

class QAction;
class QLabel;
class QVBoxLayout;

/// What stands in the window's middle while there is no camera: the ways to have some.
class WelcomePage : public QWidget
{
    Q_OBJECT

public:
    /// `find` looks for cameras on the network, `add` asks for one that is known. While an action is disabled
    /// its status tip says why.
    WelcomePage(QAction* find, QAction* add, QWidget* parent = nullptr);

    /// Why the cameras of before are missing; empty for nothing.
    void setTrouble(const QString& trouble);

Q_SIGNALS:
    void syntheticWanted();

private:
    void addWay(QVBoxLayout* column, const QString& name, QAction* action, const QString& title,
                const QString& about);

    QLabel* m_trouble;
};
