#include "layouts/CSegmentationDialog.h"

#include "layouts/CSplitButton.h"
#include "layouts/CSplitCatalog.h"
#include "layouts/CSplitWidget.h"
#include "layouts/XMLSplitInfo.h"
#include "text/LangText.h"

#include <QPushButton>
#include <QSpinBox>
#include <QVBoxLayout>

CSegmentationDialog::CSegmentationDialog(QWidget* parent) : CTitleDialog(parent), m_currentTab(0)
{
    auto* form = new QWidget;
    ui.setupUi(form);
    m_contentLayout->addWidget(form);
    SetTitle(LangText("PaneDeck.Custom Layout"));
    resize(585, 437);
    ui.sbxCol->setRange(1, SplitLayout::MaxGrid);
    ui.sbxRow->setRange(1, SplitLayout::MaxGrid);
    ui.labRow->setText(LangText("PaneDeck.Row"));
    ui.labCol->setText(LangText("PaneDeck.Col"));
    ui.sbxRow->setAccessibleName(LangText("PaneDeck.Row"));
    ui.sbxCol->setAccessibleName(LangText("PaneDeck.Col"));
    ui.SplitWidget->setAccessibleName(LangText("PaneDeck.Custom Layout"));
    ui.btnOk->setText(LangText("PaneDeck.Ok"));
    ui.btnCancel->setText(LangText("PaneDeck.Cancel"));
    for (CSplitButton* tab : ui.tab) {
        m_tabs.append(tab);
        connect(tab, SIGNAL(sig_clicked()), this, SLOT(slot_tabclick()));
    }
    RefreshTabs();
    ui.widget_3->hide();
    // Only now, so that opening the dialog stores nothing.
    connect(ui.SplitWidget, SIGNAL(sig_update()), this, SLOT(slot_update()));
    connect(ui.sbxCol, SIGNAL(valueChanged(int)), this, SLOT(slot_ColChange(int)));
    connect(ui.sbxRow, SIGNAL(valueChanged(int)), this, SLOT(slot_RowChange(int)));
}

void CSegmentationDialog::RefreshTabs()
{
    for (int i = 0; i < m_tabs.size(); ++i) {
        ShowTab(i);
        m_tabs.at(i)->SetSelected(i == m_currentTab);
        if (i == m_currentTab)
            LoadEditor();
    }
}

void CSegmentationDialog::slot_tabclick()
{
    const int index = m_tabs.indexOf(qobject_cast<CSplitButton*>(sender()));
    if (index < 0)
        return;
    m_currentTab = index;
    RefreshTabs();
}

void CSegmentationDialog::slot_update()
{
    SplitLayout layout;
    CSplitCatalog::MatrixToLayout(ui.SplitWidget->m_matrix, layout);
    SplitLayout& stored = CSplitCatalog::Instance()->customLayouts[m_currentTab];
    // What has gaps or overlaps stays so until it is edited.
    if (IsTiling(stored) || !(layout == TilingOf(stored)))
        stored = layout;
    ShowTab(m_currentTab);
    const bool saved = XMLSplitInfo().Write();
    Q_EMIT sig_LayoutEdited(m_currentTab, saved);
}

void CSegmentationDialog::slot_ColChange(int value)
{
    ui.SplitWidget->SetGridSize(1, value);
}

void CSegmentationDialog::slot_RowChange(int value)
{
    ui.SplitWidget->SetGridSize(0, value);
}

void CSegmentationDialog::ShowTab(int index)
{
    const CSplitCatalog* catalog = CSplitCatalog::Instance();
    const bool current = index == m_currentTab;
    m_tabs.at(index)->SetPixmap(
        catalog->LayoutThumbnail(1, index, current ? "#dee2e5" : "#5c6576", current ? "#aeaeae" : "#eeeeee"));
    m_tabs.at(index)->SetText(QString::number(catalog->customLayouts[index].count));
    m_tabs.at(index)->NameLayout(index + 1);
}

void CSegmentationDialog::LoadEditor()
{
    const SplitLayout layout = TilingOf(CSplitCatalog::Instance()->customLayouts[m_currentTab]);
    SplitMatrix matrix;
    CSplitCatalog::LayoutToMatrix(layout, matrix);
    ui.SplitWidget->SetMatrix(matrix);
    ui.sbxRow->setValue(layout.rows);
    ui.sbxCol->setValue(layout.cols);
}
