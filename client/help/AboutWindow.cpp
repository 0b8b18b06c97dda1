#include "help/AboutWindow.h"

#include "common/Words.h"

#include <PaneDeckVersion.h>

#include <QApplication>
#include <QBoxLayout>
#include <QDialogButtonBox>
#include <QHeaderView>
#include <QLabel>
#include <QTreeWidget>

namespace {

struct Part
{
    const char* name;
    const char* licence;
};

/// As docs/dependencies.md has them.
constexpr Part Parts[] = {
    {"Qt", "LGPL-3, GPL-2"},
    {"TinyXML", "zlib"},
    {"Highway", "Apache-2.0"},
    {"FFmpeg", "GPL-2, LGPL-2.1"},
    {"SDL", "zlib"},
    {"KDSoap", "LGPL-2.1, LGPL-3"},
    {"QtKeychain", "BSD-2"},
    {"SQLite", "public domain"},
    {"PostgreSQL", "PostgreSQL"},
    {"DejaVu", "Bitstream Vera"},
    {"Noto CJK", "SIL OFL 1.1"},
};

constexpr int IconSize = 48;

} // namespace

AboutWindow::AboutWindow(QWidget* parent) : QDialog(parent)
{
    setObjectName("AboutWindow");
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(word("About PaneDeck"));
    auto* head = new QHBoxLayout;
    auto* icon = new QLabel;
    icon->setPixmap(QApplication::windowIcon().pixmap(IconSize));
    auto* text = new QLabel(word("The reference client of PaneDeck %1.").arg(PANEDECK_VERSION));
    text->setWordWrap(true);
    head->addWidget(icon);
    head->addWidget(text, 1);

    auto* parts = new QTreeWidget;
    parts->setAccessibleName(word("Licences"));
    parts->setRootIsDecorated(false);
    parts->setHeaderLabels({word("Made with"), word("Licence")});
    parts->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    for (const Part& part : Parts) {
        const QString name = QString(part.name);
        new QTreeWidgetItem(parts, {name == "Qt" ? name + " " + qVersion() : name, part.licence});
    }
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::close);
    auto* column = new QVBoxLayout(this);
    column->addLayout(head);
    column->addWidget(parts, 1);
    column->addWidget(buttons);
    resize(460, 420);
}
