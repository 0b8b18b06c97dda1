#include "settings/SitesPage.h"

#include "common/SiteAddress.h"
#include "common/Words.h"

#include <QLabel>
#include <QPlainTextEdit>
#include <QSet>
#include <QVBoxLayout>

SitesPage::SitesPage(const QStringList& indexes) : m_lines(new QPlainTextEdit)
{
    auto* about =
        new QLabel(word("Sites to show in place of the own cameras from the next start on, a line each:"));
    auto* form = new QLabel("North=postgresql://operator@db.example/cameras");
    auto* passwords = new QLabel(word("Passwords belong into libpq's service or password file."));
    for (QLabel* label : {about, form, passwords})
        label->setWordWrap(true);
    form->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_lines->setObjectName("SettingsSites");
    m_lines->setAccessibleName(word("Sites"));
    m_lines->setTabChangesFocus(true);
    m_lines->setLineWrapMode(QPlainTextEdit::NoWrap);
    m_lines->setLayoutDirection(Qt::LeftToRight);
    m_lines->setPlainText(indexes.join('\n'));
    auto* column = new QVBoxLayout(this);
    for (QWidget* part : {static_cast<QWidget*>(about), static_cast<QWidget*>(form)})
        column->addWidget(part);
    column->addWidget(m_lines, 1);
    column->addWidget(passwords);
}

QStringList SitesPage::indexes() const
{
    QStringList indexes;
    const QStringList lines = m_lines->toPlainText().split('\n');
    for (const QString& line : lines) {
        if (!line.trimmed().isEmpty())
            indexes.append(line.trimmed());
    }
    return indexes;
}

QString SitesPage::fault() const
{
    QSet<QString> names;
    const QStringList all = indexes();
    for (int i = 0; i < all.size(); ++i) {
        QString error;
        const std::optional<SiteAddress> site = SiteAddress::parse(all.at(i), &error);
        if (!site)
            return word("Site %1 has no address of an index, or one with a password").arg(i + 1);
        if (names.contains(site->name))
            return word("Two sites are called %1").arg(site->name);
        names.insert(site->name);
    }
    return QString();
}
