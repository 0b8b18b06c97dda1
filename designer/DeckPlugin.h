#pragma once

#include <QObject>
#include <QtUiPlugin/QDesignerCustomWidgetInterface>

/// Puts the deck into the widget box of Qt Designer, and gives it to whatever else loads forms.
class DeckPlugin : public QObject, public QDesignerCustomWidgetInterface
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QDesignerCustomWidgetInterface_iid)
    Q_INTERFACES(QDesignerCustomWidgetInterface)

public:
    QString name() const override;
    QString group() const override;
    QString toolTip() const override;
    QString whatsThis() const override;
    QString includeFile() const override;
    QString domXml() const override;
    QIcon icon() const override;
    bool isContainer() const override;
    bool isInitialized() const override;

    /// Called by Designer alone, which knows nothing of an installation: the first one of the system's shared
    /// data.
    void initialize(QDesignerFormEditorInterface* core) override;

    QWidget* createWidget(QWidget* parent) override;

private:
    bool m_initialized = false;
};
