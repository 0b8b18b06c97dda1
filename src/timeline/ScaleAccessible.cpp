#include "timeline/ScaleAccessible.h"

#include "common/Accessible.h"
#include "text/LangText.h"
#include "timeline/CTimerSlider.h"

#include <QAccessibleWidget>
#include <QPointer>
#include <QTime>

namespace {

constexpr int LastSecond = 86399;
constexpr int StepSeconds = 60;

class ScaleAccessible : public QAccessibleWidget, public QAccessibleValueInterface
{
public:
    explicit ScaleAccessible(CTimerSlider* pScale) : QAccessibleWidget(pScale, QAccessible::Slider) {}

    QString text(QAccessible::Text eText) const override;
    void* interface_cast(QAccessible::InterfaceType eType) override;

    QVariant currentValue() const override { return Scale()->GetCurValue(); }
    void setCurrentValue(const QVariant& value) override;
    QVariant maximumValue() const override { return Scale()->GetTotal(); }
    QVariant minimumValue() const override { return 0; }
    QVariant minimumStepSize() const override { return StepSeconds; }

private:
    CTimerSlider* Scale() const { return static_cast<CTimerSlider*>(widget()); }
};

QString ScaleAccessible::text(QAccessible::Text eText) const
{
    const QString strGiven = QAccessibleWidget::text(eText);
    if (eText == QAccessible::Name && strGiven.isEmpty())
        return LangText("Time");
    if (eText != QAccessible::Value)
        return strGiven;
    const int nSecond = qBound(0, Scale()->GetCurValue(), LastSecond);
    return QTime(0, 0).addSecs(nSecond).toString("HH:mm:ss");
}

void* ScaleAccessible::interface_cast(QAccessible::InterfaceType eType)
{
    if (eType == QAccessible::ValueInterface)
        return static_cast<QAccessibleValueInterface*>(this);
    return QAccessibleWidget::interface_cast(eType);
}

void ScaleAccessible::setCurrentValue(const QVariant& value)
{
    const QPointer<CTimerSlider> pScale = Scale();
    if (pScale->IsThumbPressed())
        return;
    pScale->slot_SetCurNum(qBound(0, value.toInt(), pScale->GetTotal()));
    const int nValue = pScale->GetCurValue();
    Q_EMIT pScale->sig_SliderMoved(nValue);
    if (pScale)
        Q_EMIT pScale->sig_SliderReleased(nValue);
}

QAccessibleInterface* MakeScale(const QString& strClass, QObject* pObject)
{
    if (strClass == QLatin1String("CTimerSlider"))
        return new ScaleAccessible(static_cast<CTimerSlider*>(pObject));
    if (strClass == QLatin1String("CShapeWidget"))
        return new QAccessibleWidget(static_cast<QWidget*>(pObject), QAccessible::Indicator,
                                     LangText("Time"));
    return nullptr;
}

} // namespace

void InstallScaleAccessible()
{
    static const AccessibleFactory s_factory(&MakeScale);
}
