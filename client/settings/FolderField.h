#pragma once

#include <QWidget>

class QLineEdit;

/// A folder, typed or chosen; empty for the usual one, which it shows faintly.
class FolderField : public QWidget
{
    Q_OBJECT

public:
    FolderField(const QString& folder, const QString& usual, const QString& name);

    QString folder() const;

private:
    void choose();

    QLineEdit* m_edit;
};
