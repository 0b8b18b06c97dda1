#include "panes/PaneAccessible.h"

#include "common/Accessible.h"
#include "panes/CVideoWidget.h"
#include "text/LangText.h"

#include <QAccessibleWidget>

namespace {

class PaneAccessible : public QAccessibleWidget
{
public:
    explicit PaneAccessible(CVideoWidget* pPane) : QAccessibleWidget(pPane, QAccessible::Pane) {}

    QString text(QAccessible::Text eText) const override;
    QAccessible::State state() const override;

private:
    CVideoWidget* Pane() const { return static_cast<CVideoWidget*>(widget()); }
    QString Name() const;
    QString Description() const;
};

QString PaneAccessible::text(QAccessible::Text eText) const
{
    const QString strGiven = QAccessibleWidget::text(eText);
    if (!strGiven.isEmpty())
        return strGiven;
    if (eText == QAccessible::Name)
        return Name();
    return eText == QAccessible::Description ? Description() : QString();
}

QString PaneAccessible::Name() const
{
    const QString strNumber = LangText("Pane %1").arg(Pane()->GetWndIndex() + 1);
    const QString strTitle = Pane()->GetTitle();
    return strTitle.isEmpty() ? strNumber : strNumber + ", " + strTitle;
}

QString PaneAccessible::Description() const
{
    QStringList states(LangText(Pane()->UpdateEnable() ? "idle" : "playing"));
    if (Pane()->IsFrozen())
        states.append(LangText("alarm"));
    if (Pane()->btncheck(BTN_RECORD))
        states.append(LangText("recording"));
    if (Pane()->btncheck(BTN_AUDIO))
        states.append(LangText("sound on"));
    if (Pane()->btncheck(BTN_ZOOM))
        states.append(LangText("PaneDeck.Zoom"));
    return states.join(", ");
}

QAccessible::State PaneAccessible::state() const
{
    QAccessible::State state = QAccessibleWidget::state();
    state.selectable = true;
    state.selected = Pane()->IsActive();
    return state;
}

QAccessibleInterface* MakePane(const QString& strClass, QObject* pObject)
{
    if (strClass != QLatin1String("CVideoWidget"))
        return nullptr;
    return new PaneAccessible(static_cast<CVideoWidget*>(pObject));
}

} // namespace

void InstallPaneAccessible()
{
    static const AccessibleFactory s_factory(&MakePane);
}
