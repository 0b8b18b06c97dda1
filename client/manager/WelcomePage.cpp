#include "manager/WelcomePage.h"

#include "common/Words.h"

#include <QAction>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>

namespace {

constexpr int Width = 460;
constexpr int ButtonHeight = 34;
constexpr int TitleFactor = 2;

} // namespace

WelcomePage::WelcomePage(QAction* find, QAction* add, QWidget* parent)
    : QWidget(parent), m_trouble(new QLabel)
{
    setObjectName("Welcome");
    auto* title = new QLabel(word("Welcome to PaneDeck"));
    QFont large = title->font();
    large.setPointSizeF(large.pointSizeF() * TitleFactor);
    title->setFont(large);
    auto* way = new QLabel(word("There is no camera yet. Three ways to have some:"));
    for (QLabel* label : {title, way, m_trouble})
        label->setWordWrap(true);
    m_trouble->hide();

    auto* middle = new QWidget;
    middle->setFixedWidth(Width);
    auto* column = new QVBoxLayout(middle);
    column->addWidget(title);
    column->addWidget(way);
    column->addWidget(m_trouble);
    addWay(column, "WelcomeFind", find, word("&Find cameras on the network"),
           word("Asks who speaks ONVIF on this network, and takes over name and streams."));
    addWay(column, "WelcomeAdd", add, word("&Type an address"),
           word("For a camera whose address is known, such as rtsp://..., or for a file."));
    auto* synthetic = new QAction(this);
    connect(synthetic, &QAction::triggered, this, &WelcomePage::syntheticWanted);
    addWay(column, "WelcomeSynthetic", synthetic, word("T&ry it with synthetic cameras"),
           word("Sixteen made-up cameras that move, record and raise alarms. They can be removed later."));
    auto* row = new QGridLayout(this);
    row->addWidget(middle, 0, 0, Qt::AlignCenter);
}

/// The button does what the action does, as long as that can be done; else it says why it can't.
void WelcomePage::addWay(QVBoxLayout* column, const QString& name, QAction* action, const QString& title,
                         const QString& about)
{
    auto* button = new QPushButton(title);
    auto* line = new QLabel(about);
    button->setObjectName(name);
    button->setAccessibleDescription(about);
    line->setWordWrap(true);
    line->setForegroundRole(QPalette::PlaceholderText);
    button->setMinimumHeight(ButtonHeight);
    column->addSpacing(TitleFactor * column->spacing());
    column->addWidget(button);
    column->addWidget(line);
    const auto follow = [button, line, action, about] {
        button->setEnabled(action->isEnabled());
        line->setText(action->isEnabled() || action->statusTip().isEmpty() ? about : action->statusTip());
    };
    connect(action, &QAction::changed, this, follow);
    connect(button, &QPushButton::clicked, action, &QAction::trigger);
    follow();
}

void WelcomePage::setTrouble(const QString& trouble)
{
    m_trouble->setText(trouble);
    m_trouble->setVisible(!trouble.isEmpty());
}
