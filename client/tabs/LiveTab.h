#pragma once

#include "tabs/DeckTab.h"
#include "views/DeckView.h"

#include <QHash>

#include <optional>

class InstantPlayback;

/// The live wall: it shows views, and tells what is there as one. Panes are exchanged by dragging one onto
/// another.
class LiveTab : public DeckTab
{
    Q_OBJECT

public:
    LiveTab(const CameraList& cameras, CameraHub* hub, EventLog* log);

    /// What the tab shows first; without it the cameras in order.
    void setFirstView(const DeckView& view) { m_firstView = view; }
    /// What it shows now, under the name of the view that was shown last.
    DeckView view() const;
    /// Shows a view. Panes whose camera is gone say so, and keep its place.
    void showView(const DeckView& view);
    /// The name of the view that was shown last, or that what is shown was kept under; empty for none.
    const QString& viewName() const { return m_viewName; }
    void setViewName(const QString& name) { m_viewName = name; }

    /// Whether a camera that is new comes into the first free pane, as it does at first.
    void setTakesNew(bool takes) { m_takesNew = takes; }

    void showCamera(const CameraRecord& camera, int pane) override;

Q_SIGNALS:
    /// The toolbar's button was pressed.
    void saveAsked();

protected:
    void firstShown() override;
    void buttonClicked(int pane, Btn_type_EX button) override;
    void closePane(int pane) override;

private Q_SLOTS:
    void takeNewCamera(const CameraRecord* camera);
    void exchangePanes(int source, int target);
    void keepPage(int page);

private:
    void showPane(int pane, const PaneView& wanted);
    void selectLayout(const DeckView& view);
    void replay(int pane);

    const CameraList& m_cameras;
    InstantPlayback* m_instant;
    std::optional<DeckView> m_firstView;
    QHash<int, PaneView> m_gone; ///< the places of cameras that there are not
    QString m_viewName;
    int m_page = 0;
    bool m_takesNew = true;
};
