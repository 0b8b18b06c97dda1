#include "WindowFaults.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractSlider>
#include <QAbstractSpinBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QStyle>
#include <QStyleOptionComboBox>
#include <QTabBar>

namespace {

QString textOf(const QWidget& widget)
{
    if (const auto* label = qobject_cast<const QLabel*>(&widget))
        return label->text();
    if (const auto* button = qobject_cast<const QAbstractButton*>(&widget))
        return button->text();
    if (const auto* box = qobject_cast<const QComboBox*>(&widget))
        return box->currentText();
    if (const auto* group = qobject_cast<const QGroupBox*>(&widget))
        return group->title();
    const auto* spin = qobject_cast<const QAbstractSpinBox*>(&widget);
    return spin ? spin->text() : QString();
}

bool isControl(const QWidget& widget)
{
    if (const auto* label = qobject_cast<const QLabel*>(&widget))
        return !label->text().isEmpty();
    return qobject_cast<const QAbstractButton*>(&widget) || qobject_cast<const QComboBox*>(&widget) ||
           qobject_cast<const QAbstractSpinBox*>(&widget) || qobject_cast<const QLineEdit*>(&widget) ||
           qobject_cast<const QAbstractItemView*>(&widget) || qobject_cast<const QTabBar*>(&widget) ||
           qobject_cast<const QPlainTextEdit*>(&widget) || qobject_cast<const QProgressBar*>(&widget) ||
           qobject_cast<const QAbstractSlider*>(&widget) || qobject_cast<const QGroupBox*>(&widget);
}

/// What is over a picture is meant to be.
bool isOverPicture(const QWidget& widget)
{
    for (const QWidget* above = &widget; above; above = above->parentWidget()) {
        if (above->inherits("CVideoWidget") || above->inherits("CVideoTitleWidget"))
            return true;
    }
    return false;
}

/// The part of a widget that isn't hidden by the edges of what holds it, in the window's coordinates.
QRect shownPart(const QWidget& widget, const QWidget& top)
{
    QRect part(widget.mapTo(&top, QPoint()), widget.size());
    for (const QWidget* above = widget.parentWidget(); above && above != &top; above = above->parentWidget())
        part &= QRect(above->mapTo(&top, QPoint()), above->size());
    return part & top.rect();
}

/// How wide a control has to be to show its text.
int leastWidth(const QWidget& widget, const QString& text)
{
    if (qobject_cast<const QAbstractButton*>(&widget))
        return widget.minimumSizeHint().width();
    const int letters = widget.fontMetrics().horizontalAdvance(QString(text).remove('&'));
    const auto* box = qobject_cast<const QComboBox*>(&widget);
    if (!box || box->isEditable())
        return letters;
    QStyleOptionComboBox option;
    option.initFrom(box);
    const QRect field =
        box->style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, box);
    return letters + box->width() - field.width();
}

bool isCut(const QWidget& widget, const QWidget& top)
{
    if (const auto* tabs = qobject_cast<const QTabBar*>(&widget))
        return tabs->sizeHint().width() > tabs->width() + 1;
    const QString text = textOf(widget);
    const auto* label = qobject_cast<const QLabel*>(&widget);
    const bool giveWay = widget.sizePolicy().horizontalPolicy() == QSizePolicy::Ignored;
    if (text.isEmpty() || giveWay || widget.inherits("TroubleLabel"))
        return false;
    if (label && label->wordWrap())
        return label->heightForWidth(label->width()) > label->height() + 1;
    const QRect holder = widget.parentWidget()->rect();
    const bool isOutside = !shownPart(widget, top).isValid() ||
                           widget.geometry().right() > holder.right() + 1 || widget.geometry().left() < -1;
    return isOutside || widget.width() < leastWidth(widget, text) ||
           widget.height() < widget.fontMetrics().height();
}

QString described(const QWidget& widget, const QWidget& top)
{
    const QRect place(widget.mapTo(&top, QPoint()), widget.size());
    return QString("%1 %2 \"%3\" at %4,%5 of %6 x %7")
        .arg(widget.metaObject()->className(), widget.objectName(), textOf(widget))
        .arg(place.x())
        .arg(place.y())
        .arg(place.width())
        .arg(place.height());
}

} // namespace

QStringList windowFaults(const QWidget& top)
{
    QStringList faults;
    QVector<const QWidget*> seen;
    for (const QWidget* widget : top.findChildren<QWidget*>()) {
        if (!widget->isVisibleTo(&top) || widget->window() != top.window() || isOverPicture(*widget) ||
            !isControl(*widget))
            continue;
        if (isCut(*widget, top))
            faults.append("cut: " + described(*widget, top));
        for (const QWidget* other : qAsConst(seen)) {
            const QRect both = shownPart(*widget, top) & shownPart(*other, top);
            if (both.width() > 1 && both.height() > 1 && !other->isAncestorOf(widget) &&
                !widget->isAncestorOf(other))
                faults.append("over each other: " + described(*widget, top) + ", " + described(*other, top));
        }
        seen.append(widget);
    }
    const auto* more = top.findChild<QWidget*>("qt_menubar_ext_button");
    if (more && more->isVisibleTo(&top))
        faults.append("menus have no room: " + top.windowTitle());
    return faults;
}
