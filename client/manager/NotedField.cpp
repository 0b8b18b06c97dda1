#include "manager/NotedField.h"

#include <QFormLayout>
#include <QLabel>

namespace {

constexpr int Slack = 3;
const QColor OnDark("#ff7b72");
const QColor OnLight("#b3261e");

/// The line under a key makes a text a little wider than it is measured, and what is over is cut.
class NameLabel : public QLabel
{
public:
    using QLabel::QLabel;
    QSize sizeHint() const override { return QLabel::sizeHint() + QSize(Slack, 0); }
    QSize minimumSizeHint() const override { return QLabel::minimumSizeHint() + QSize(Slack, 0); }
};

} // namespace

NotedField::NotedField(QWidget* field, QWidget* parent)
    : QWidget(parent), m_field(field), m_note(new QLabel(this))
{
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(2);
    column->addWidget(field);
    column->addWidget(m_note);
    m_note->setWordWrap(true);
    m_note->hide();
    setFocusProxy(field);
}

NotedField* NotedField::add(QFormLayout* form, const QString& label, QWidget* field)
{
    auto* noted = new NotedField(field);
    auto* name = new NameLabel(label);
    name->setBuddy(field);
    form->addRow(name, noted);
    return noted;
}

void NotedField::keepRoom()
{
    m_note->setMinimumHeight(m_note->fontMetrics().height());
    m_note->show();
}

void NotedField::setNote(const QString& note)
{
    const bool isDark = palette().color(QPalette::Window).lightness() < 128;
    m_note->setStyleSheet(QString("color: %1").arg((isDark ? OnDark : OnLight).name()));
    m_note->setText(note);
    m_note->setVisible(!note.isEmpty() || m_note->minimumHeight() > 0);
    m_field->setAccessibleDescription(note);
}
