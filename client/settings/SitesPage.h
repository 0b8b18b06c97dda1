#pragma once

#include <QWidget>

class QPlainTextEdit;

/// The indexes of several recorders in the settings, as `--index` takes them, one a line.
class SitesPage : public QWidget
{
    Q_OBJECT

public:
    explicit SitesPage(const QStringList& indexes);

    QStringList indexes() const;
    /// Why they can't be kept, in the user's words; empty if they can.
    QString fault() const;

private:
    QPlainTextEdit* m_lines;
};
