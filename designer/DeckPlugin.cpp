#include "DeckPlugin.h"

#include "FormDeck.h"

#include <QIcon>
#include <QPainter>
#include <QStandardPaths>

QString DeckPlugin::name() const
{
    return "FormDeck";
}

QString DeckPlugin::group() const
{
    return "PaneDeck";
}

QString DeckPlugin::toolTip() const
{
    return "A deck of video panes";
}

QString DeckPlugin::whatsThis() const
{
    return "A deck of up to 64 video panes in split layouts, with a toolbar of its kind.";
}

QString DeckPlugin::includeFile() const
{
    return "FormDeck.h";
}

QString DeckPlugin::domXml() const
{
    return R"(<ui language="c++" displayname="Pane Deck">
    <widget class="FormDeck" name="formDeck">
        <property name="geometry"><rect><x>0</x><y>0</y><width>480</width><height>360</height></rect></property>
    </widget>
    <customwidgets><customwidget>
        <class>FormDeck</class>
        <extends>QWidget</extends>
        <propertyspecifications>
            <tooltip name="kind">What the deck is for: its toolbar and its panes</tooltip>
            <tooltip name="paneCount">All panes, on every page: 1 to 64</tooltip>
            <tooltip name="firstLayout">Panes on the first page: 1, 4, 6, 8, 9, 16, 25, 36, 49 or 64</tooltip>
        </propertyspecifications>
    </customwidget></customwidgets>
</ui>)";
}

QIcon DeckPlugin::icon() const
{
    QPixmap pixmap(22, 22);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    for (const QPoint cell : {QPoint(1, 3), QPoint(12, 3), QPoint(1, 12), QPoint(12, 12)})
        painter.fillRect(QRect(cell, QSize(9, 7)), QColor(70, 110, 160));
    return pixmap;
}

bool DeckPlugin::isContainer() const
{
    return false;
}

bool DeckPlugin::isInitialized() const
{
    return m_initialized;
}

void DeckPlugin::initialize(QDesignerFormEditorInterface*)
{
    const QString tree = QStandardPaths::locate(QStandardPaths::GenericDataLocation, "panedeck",
                                                QStandardPaths::LocateDirectory);
    if (m_initialized || tree.isEmpty())
        return;
    m_initialized = true;
    CPaneDeck::SetInstallation(tree, QString());
    CPaneDeck::SetLanguageFile(tree + "/languages/English.ini");
}

QWidget* DeckPlugin::createWidget(QWidget* parent)
{
    return new FormDeck(parent);
}
