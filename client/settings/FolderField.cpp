#include "settings/FolderField.h"

#include "common/Words.h"

#include <QBoxLayout>
#include <QFileDialog>
#include <QLineEdit>
#include <QToolButton>

FolderField::FolderField(const QString& folder, const QString& usual, const QString& name)
    : m_edit(new QLineEdit(folder))
{
    m_edit->setPlaceholderText(usual);
    m_edit->setAccessibleName(name);
    auto* button = new QToolButton;
    button->setText("…");
    button->setAccessibleName(word("Choose a folder"));
    button->setToolTip(word("Choose a folder"));
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(m_edit, 1);
    row->addWidget(button);
    setFocusProxy(m_edit);
    connect(button, &QToolButton::clicked, this, &FolderField::choose);
}

QString FolderField::folder() const
{
    return m_edit->text().trimmed();
}

void FolderField::choose()
{
    const QString start = folder().isEmpty() ? m_edit->placeholderText() : folder();
    const QString chosen = QFileDialog::getExistingDirectory(this, word("Choose a folder"), start);
    if (!chosen.isEmpty())
        m_edit->setText(chosen);
}
