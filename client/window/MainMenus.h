#pragma once

#include <QObject>
#include <QPair>
#include <QVariant>
#include <QVector>

#include <functional>

class MainWindow;
class QMenu;

/// The menus of the client's window. What they choose works on the tab in front.
class MainMenus : public QObject
{
    Q_OBJECT

public:
    explicit MainMenus(MainWindow* window);

private:
    /// The text of each choice and what it stands for.
    using Choices = QVector<QPair<QString, QVariant>>;

    void addLayouts();
    void addView();
    void addPane();
    void addScales();
    void addMouse();
    void addLanguages();
    void addWindow();
    QMenu* addChoices(const QString& title, const Choices& choices, const QVariant& checked,
                      std::function<void(const QVariant&)> choose);
    void addHelp();
    void showKeys();
    void showAbout();

    MainWindow* m_window;
};
