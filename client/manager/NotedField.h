#pragma once

#include <QWidget>

class QFormLayout;
class QLabel;

/// A field with room below it for what is wrong with what it holds.
class NotedField : public QWidget
{
    Q_OBJECT

public:
    explicit NotedField(QWidget* field, QWidget* parent = nullptr);

    /// Adds it to a form, with a label whose key leads into the field.
    static NotedField* add(QFormLayout* form, const QString& label, QWidget* field);

    /// Room for a line is there from now on, so that nothing moves when one comes.
    void keepRoom();
    /// In red below the field, and to screen readers its description; empty for nothing.
    void setNote(const QString& note);

private:
    QWidget* m_field;
    QLabel* m_note;
};
