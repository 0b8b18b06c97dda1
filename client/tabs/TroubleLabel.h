#pragma once

#include <QLabel>

class ClientArchive;

/// Says why not everything is recorded here, where the user looks for recordings: the first reason, and all
/// of them in its tool tip. However long it is, it makes no window wider.
class TroubleLabel : public QLabel
{
    Q_OBJECT

public:
    /// The archive must outlive the label.
    explicit TroubleLabel(const ClientArchive* archive, QWidget* parent = nullptr);

private:
    void showTrouble();

    const ClientArchive* m_archive;
};
