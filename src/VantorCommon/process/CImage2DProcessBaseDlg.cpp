// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/process/CImage2DProcessBaseDlg.h>

#include <VantorCommon/shell/center/CCenterModel.h>
#include <VantorCommon/shell/mvc/CMVCManager.h>
#include <VantorCommon/shell/viewer/ViewerName_p.h>

#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QStandardItemModel>
#include <QTreeView>
#include <QVBoxLayout>
#include <algorithm>

namespace
{
constexpr QSize kSizeHint(600, 300);
/// More cells than any centre has; keeps a wrong size from filling the memory.
constexpr long long kMostEntries = 1024;

const CCenterModel* FindCentre()
{
    const auto item = CMVCManager::FindFirst(
        [](const SMVC& each) { return dynamic_cast<CCenterModel*>(each.pModel) != nullptr; });
    return item ? static_cast<const CCenterModel*>(item->pModel) : nullptr;
}

template <class Layout> Layout* MakeLayout(QWidget* pWidget)
{
    auto* pLayout = new Layout(pWidget);
    pLayout->setContentsMargins(0, 0, 0, 0);
    return pLayout;
}

QComboBox* AddChooser(QGridLayout* pGrid, int nRow, const QString& strLabel)
{
    auto* pLabel = new QLabel(strLabel);
    auto* pCombo = new QComboBox;
    pCombo->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    pLabel->setBuddy(pCombo);
    pGrid->addWidget(pLabel, nRow, 0);
    pGrid->addWidget(pCombo, nRow, 1);
    return pCombo;
}

QGridLayout* AddChooserGroup(QHBoxLayout* pRow, const QString& strTitle)
{
    auto* pGroup = new QGroupBox(strTitle);
    pRow->addWidget(pGroup);
    auto* pGrid = MakeLayout<QGridLayout>(pGroup);
    pGrid->setSizeConstraint(QLayout::SetMinAndMaxSize);
    return pGrid;
}
} // namespace

CImage2DProcessBaseDlg::CImage2DProcessBaseDlg(QWidget* pParent) : QDialog(pParent)
{
    auto* pLayout = MakeLayout<QVBoxLayout>(this);
    pLayout->addWidget(CreateImageRow());
    pLayout->addWidget(CreateParameterRow());
    m_pButtonGroup = new QGroupBox(QStringLiteral("Button"));
    pLayout->addWidget(m_pButtonGroup);
    CreateMessage();
    pLayout->addWidget(m_pMessageGroup);

    if (const CCenterModel* pCentre = FindCentre())
        connect(pCentre, &CCenterModel::signal_ChangedSize, this,
                &CImage2DProcessBaseDlg::slot_ChangeImageViewNumber);
    connect(m_pSourceImage, &QComboBox::textActivated, this,
            &CImage2DProcessBaseDlg::signal_ChangeSourceImageView);
    ChangeImageViewNumber();
}

CImage2DProcessBaseDlg::~CImage2DProcessBaseDlg()
{
    // An open editor writes its value back when it is destroyed, later than this, and would call a derived
    // dialog that no longer exists.
    for (const auto* pParameters : findChildren<QStandardItemModel*>(QString(), Qt::FindDirectChildrenOnly))
        disconnect(pParameters, nullptr, this, nullptr);
}

QWidget* CImage2DProcessBaseDlg::CreateImageRow()
{
    auto* pWidget = new QWidget;
    auto* pRow = MakeLayout<QHBoxLayout>(pWidget);
    QGridLayout* pSource = AddChooserGroup(pRow, QStringLiteral("Source Image"));
    m_pSourceImage = AddChooser(pSource, 0, QStringLiteral("Source Image"));
    m_pSourceROI = AddChooser(pSource, 1, QStringLiteral("Source ROI"));
    auto* pWhole = new QPushButton(QStringLiteral("Whole image"));
    pWhole->setAutoDefault(false);
    connect(pWhole, &QPushButton::clicked, this, [this] { SetSourceROIIndex(-1); });
    pSource->addWidget(pWhole, 1, 2);
    QGridLayout* pTarget = AddChooserGroup(pRow, QStringLiteral("Target Image"));
    m_pTargetImage = AddChooser(pTarget, 0, QStringLiteral("Target Image"));
    m_pTargetROI = AddChooser(pTarget, 1, QStringLiteral("Target ROI"));
    m_pTargetImage->setEnabled(false);
    m_pTargetROI->setEnabled(false);
    return pWidget;
}

QWidget* CImage2DProcessBaseDlg::CreateParameterRow()
{
    auto* pWidget = new QWidget;
    auto* pRow = MakeLayout<QHBoxLayout>(pWidget);
    m_pParameterGroup = new QGroupBox(QStringLiteral("Parameter"));
    m_pResultGroup = new QGroupBox(QStringLiteral("Result"));
    pRow->addWidget(m_pParameterGroup);
    pRow->addWidget(m_pResultGroup);
    for (QWidget* pEach :
         {static_cast<QWidget*>(m_pParameterGroup), static_cast<QWidget*>(m_pResultGroup), pWidget})
        pEach->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    return pWidget;
}

void CImage2DProcessBaseDlg::CreateMessage()
{
    m_pMessageGroup = new QGroupBox(QStringLiteral("Message"));
    m_pMessage = new QLabel;
    m_pMessage->setTextFormat(Qt::PlainText);
    m_pMessage->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    MakeLayout<QVBoxLayout>(m_pMessageGroup)->addWidget(m_pMessage);
}

QStandardItemModel* CImage2DProcessBaseDlg::AddParameterTree(const std::vector<SParameter>& vctRows,
                                                             QAbstractItemDelegate* pDelegate)
{
    auto* pModel = new QStandardItemModel(this);
    for (const SParameter& row : vctRows) {
        auto* pValue = new QStandardItem(row.strValue);
        pValue->setSizeHint(QSize(0, m_pSourceImage->sizeHint().height())); // room for an editor
        pModel->appendRow({new QStandardItem(row.strLabel), pValue});
    }
    auto* pTree = new QTreeView;
    pTree->setHeaderHidden(true);
    pTree->setRootIsDecorated(false);
    pTree->setModel(pModel);
    pTree->setItemDelegateForColumn(1, pDelegate);
    pTree->setAccessibleName(m_pParameterGroup->title());
    // The arrow keys reach the values, which F2 edits; they start at the first.
    pTree->setSelectionBehavior(QAbstractItemView::SelectItems);
    pTree->selectionModel()->setCurrentIndex(pModel->index(0, 1), QItemSelectionModel::NoUpdate);
    pTree->resizeColumnToContents(0);
    auto* pLayout = MakeLayout<QVBoxLayout>(m_pParameterGroup);
    pLayout->setSpacing(0);
    pLayout->addWidget(pTree);
    return pModel;
}

QPushButton* CImage2DProcessBaseDlg::AddRunButton()
{
    auto* pButton = new QPushButton(QStringLiteral("Run"));
    pButton->setAutoDefault(false);
    pButton->setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Maximum);
    connect(pButton, &QPushButton::clicked, this, &CImage2DProcessBaseDlg::signal_Run);
    auto* pLayout = MakeLayout<QVBoxLayout>(m_pButtonGroup);
    pLayout->setSpacing(0);
    pLayout->addWidget(pButton);
    return pButton;
}

void CImage2DProcessBaseDlg::ChangeImageViewNumber()
{
    const CCenterModel* pCentre = FindCentre();
    if (!pCentre)
        return;
    const QString strChosen = GetSourceImage();
    m_pSourceImage->clear();
    const long long nCells = static_cast<long long>(pCentre->GetRow()) * pCentre->GetColumn();
    for (int i = 0; i < std::min(nCells, kMostEntries); ++i)
        m_pSourceImage->addItem(ViewerName(i));
    const int nChosen = m_pSourceImage->findText(strChosen);
    if (nChosen >= 0)
        m_pSourceImage->setCurrentIndex(nChosen);
}

void CImage2DProcessBaseDlg::slot_ChangeImageViewNumber()
{
    ChangeImageViewNumber();
}

void CImage2DProcessBaseDlg::SetSourceROITitle(const std::vector<QString>& vctNames)
{
    m_pSourceROI->clear();
    for (const QString& strName : vctNames)
        m_pSourceROI->addItem(strName);
}

void CImage2DProcessBaseDlg::ClearSourceROI()
{
    m_pSourceROI->clear();
}

void CImage2DProcessBaseDlg::AddSourceROI(const QString& name)
{
    m_pSourceROI->addItem(name);
}

void CImage2DProcessBaseDlg::DeleteSourceROI(const QString& name)
{
    for (int i = 0; i < m_pSourceROI->count(); ++i)
        if (m_pSourceROI->itemText(i) == name)
            return m_pSourceROI->removeItem(i);
}

void CImage2DProcessBaseDlg::SetSourceImage(const QString& strTitle)
{
    const int nIndex = m_pSourceImage->findText(strTitle);
    if (nIndex >= 0)
        m_pSourceImage->setCurrentIndex(nIndex);
}

QString CImage2DProcessBaseDlg::GetSourceImage() const
{
    return m_pSourceImage->currentText();
}

void CImage2DProcessBaseDlg::SetSourceROIIndex(int index)
{
    if (index < m_pSourceROI->count())
        m_pSourceROI->setCurrentIndex(index);
}

int CImage2DProcessBaseDlg::GetSourceROIIndex() const
{
    return m_pSourceROI->currentIndex();
}

QString CImage2DProcessBaseDlg::GetSourceROIName() const
{
    return m_pSourceROI->currentText();
}

void CImage2DProcessBaseDlg::SetMessage(const QString& strMessage)
{
    m_pMessage->setText(strMessage);
}

QSize CImage2DProcessBaseDlg::sizeHint() const
{
    return kSizeHint;
}
