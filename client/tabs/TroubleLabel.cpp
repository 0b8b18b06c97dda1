#include "tabs/TroubleLabel.h"

#include "cameras/ClientArchive.h"

TroubleLabel::TroubleLabel(const ClientArchive* archive, QWidget* parent) : QLabel(parent), m_archive(archive)
{
    setObjectName("ArchiveTrouble");
    setTextFormat(Qt::PlainText);
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    QFont bold = font();
    bold.setBold(true);
    setFont(bold);
    connect(archive, &ClientArchive::troubleChanged, this, &TroubleLabel::showTrouble);
    showTrouble();
}

void TroubleLabel::showTrouble()
{
    const QString trouble = m_archive->trouble();
    setText(trouble.section('\n', 0, 0));
    const QString lines = trouble.toHtmlEscaped().replace('\n', "<br>");
    setToolTip(lines.isEmpty() ? QString() : "<p>" + lines + "</p>");
}
