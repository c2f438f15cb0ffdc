// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/shell/center/CCenterCtrl.h>

#include <Vantor/image/CImage.h>
#include <VantorCommon/annotation/model/CImageView2DToolModel.h>
#include <VantorCommon/annotation/object/CImageView2DDrawableGeometry.h>
#include <VantorCommon/shell/center/CCenterCtrlCompare_p.h>
#include <VantorCommon/shell/center/CCenterCtrlTools_p.h>
#include <VantorCommon/shell/center/CCenterModel.h>
#include <VantorCommon/shell/center/CCenterView.h>
#include <VantorCommon/shell/dock/CPropertyDockView.h>
#include <VantorCommon/shell/dock/CSelectionDialog.h>
#include <VantorCommon/shell/dock/CStatusBarDockView.h>
#include <VantorCommon/shell/dock/CToolBoxDockView.h>
#include <VantorCommon/shell/viewer/CImageViewer.h>
#include <VantorCommon/shell/viewer/CImageViewerCtrl.h>
#include <VantorCommon/shell/viewer/CImageViewerModel.h>
#include <VantorCommon/shell/viewer/ViewerName_p.h>
#include <VantorCommon/view2d/ImageFileDialogs_p.h>

#include <QIcon>
#include <algorithm>

namespace
{
constexpr int kViewerCount = 4;
constexpr long long kMaxCells = 64; // the most names that a dialog lists, however large the grid
constexpr int kNoView = -1;
const SMVCItem kNoItem{nullptr, nullptr, nullptr};

CImageViewerCtrl* ViewerCtrl(const SMVCItem& item)
{
    return dynamic_cast<CImageViewerCtrl*>(item.pCtrl);
}
} // namespace

CCenterCtrl::CCenterCtrl(CCenterModel* pModel, CCenterView* pView, CToolBoxDockView* pToolBoxDockView,
                         CPropertyDockView* pPropertyDockView, CStatusBarDockView* pStatusBarDockView)
    : m_pModel(pModel), m_pView(pView), m_pToolBoxDockView(pToolBoxDockView),
      m_pPropertyDockView(pPropertyDockView), m_pStatusBarDockView(pStatusBarDockView),
      m_pToolModel(std::make_unique<CImageView2DToolModel>()),
      m_pTools(std::make_unique<CCenterCtrlTools>(
          [this](const QString& strTool, CImage2DProcessBaseCtrl& ctrl) { RelayTool(strTool, ctrl); }))
{
    for (int i = 0; i < kViewerCount; ++i)
        CreateViewer(i);
    std::vector<CCenterCtrlCompare::SSide> vctSides;
    for (const SMVCItem& item : m_vctMVC)
        vctSides.push_back({static_cast<CImageViewer*>(item.pView), ViewerCtrl(item)});
    m_pCompare = std::make_unique<CCenterCtrlCompare>(std::move(vctSides));
    if (m_pView)
        ConnectCentre();
    CMVCManager::PushMVC(pModel, pView, this);
    // The docks first show the panels of viewer 0, not those of the viewer made last.
    static_cast<CImageViewer*>(m_vctMVC.front().pView)->slot_Press2D();
}

CCenterCtrl::~CCenterCtrl()
{
    m_pTools.reset(); // the tools work on the viewers
    m_pCompare.reset();
    for (const SMVCItem& item : m_vctMVC) {
        delete item.pModel;
        delete item.pCtrl;
    }
}

void CCenterCtrl::CreateViewer(int nIndex)
{
    auto* pModel = new CImageViewerModel;
    auto* pViewer = new CImageViewer(pModel, nIndex, m_pView);
    pViewer->setWindowTitle(ViewerName(nIndex));
    auto* pCtrl = new CImageViewerCtrl(pViewer, pModel, m_pToolModel.get(), m_pToolBoxDockView,
                                       m_pPropertyDockView, m_pStatusBarDockView);
    m_vctMVC.push_back(SMVCItem{pModel, pCtrl, pViewer});
    if (!m_pView) {
        // No centre view owns the viewer, so it is deleted with its controller.
        connect(pCtrl, &QObject::destroyed, pViewer, [pViewer] { delete pViewer; });
        return;
    }
    m_pView->AddImageView(pViewer, 0, 0);
    using V = CImageViewer;
    using C = CCenterView;
    const auto relay = [&](auto pFrom, auto pTo) { connect(pViewer, pFrom, m_pView.data(), pTo); };
    relay(&V::signal_AddDrawableObjectWithViewID, &C::signal_AddDrawableObjectWithViewID);
    relay(&V::signal_DeleteDrawableObjectWithViewID, &C::signal_DeleteDrawableObjectWithViewID);
    relay(&V::signal_BeforeDeleteDrawableObjectWithViewID, &C::signal_BeforeDeleteDrawableObjectWithViewID);
    relay(&V::signal_ChangeDrawableObjectPropertyWithViewID,
          &C::signal_ChangeDrawableObjectPropertyWithViewID);
}

void CCenterCtrl::ConnectCentre()
{
    m_pView->UpdateLayout();
    connect(m_pView.data(), &CCenterView::signal_ChangeLayout1x1, this, &CCenterCtrl::slot_ChangeLayout1x1);
    connect(m_pView.data(), &CCenterView::signal_ChangeLayout2x1, this, &CCenterCtrl::slot_ChangeLayout2x1);
    connect(m_pView.data(), &CCenterView::signal_ChangeLayout2x2, this, &CCenterCtrl::slot_ChangeLayout2x2);
    if (m_pModel)
        connect(m_pModel.data(), &CCenterModel::signal_ChangedSize, m_pView.data(),
                &CCenterView::slot_Update);
}

bool CCenterCtrl::Undo()
{
    for (const SMVCItem& item : m_vctMVC)
        item.pCtrl->Undo();
    return false;
}

bool CCenterCtrl::Redo()
{
    for (const SMVCItem& item : m_vctMVC)
        item.pCtrl->Redo();
    return false;
}

void CCenterCtrl::SetOptions(const SCenterOptions& sOptions)
{
    m_sOptions = sOptions;
    for (const SMVCItem& item : m_vctMVC)
        if (auto* pCtrl = ViewerCtrl(item))
            pCtrl->SetOptions(sOptions);
    m_pTools->SetOptions(sOptions);
    m_pCompare->SetOptions(sOptions);
}

void CCenterCtrl::ChangeLayout(int nRow, int nColumn)
{
    if (m_pModel)
        m_pModel->ChangeSize(nColumn, nRow);
}

void CCenterCtrl::slot_ChangeLayout1x1()
{
    ChangeLayout(1, 1);
}

void CCenterCtrl::slot_ChangeLayout2x1()
{
    ChangeLayout(1, 2);
}

void CCenterCtrl::slot_ChangeLayout2x2()
{
    ChangeLayout(2, 2);
}

int CCenterCtrl::CellCount() const
{
    const long long nRows = std::max(m_pModel->GetRow(), 0);
    const long long nColumns = std::max(m_pModel->GetColumn(), 0);
    return static_cast<int>(std::min(nRows * nColumns, kMaxCells));
}

SMVCItem CCenterCtrl::FindByName(const QString& strName, int nCount) const
{
    for (int i = 0; i < nCount && i < kViewerCount; ++i)
        if (ViewerName(i) == strName)
            return m_vctMVC[static_cast<std::size_t>(i)];
    return kNoItem;
}

SMVCItem CCenterCtrl::SelectMVC()
{
    if (!m_pModel || !m_pView)
        return kNoItem;
    const int nCount = CellCount();
    if (nCount < 2)
        return m_vctMVC.front();
    const QPointer<CCenterCtrl> pThis = this;
    const QPointer<CSelectionDialog> pDialog = new CSelectionDialog(m_pView);
    for (int i = 0; i < nCount; ++i)
        pDialog->AddSelectionItem(ViewerName(i));
    const bool bAccepted = pDialog->exec() == QDialog::Accepted;
    // The centre may be destroyed while the dialog is open, and its view deletes the dialog.
    const QString strName = pDialog && bAccepted ? pDialog->GetSelectedItem() : QString();
    delete pDialog;
    return pThis ? FindByName(strName, nCount) : kNoItem;
}

void CCenterCtrl::OpenFile(const QString& strFile)
{
    if (auto* pCtrl = ViewerCtrl(SelectMVC()))
        pCtrl->LoadFile(strFile);
}

void CCenterCtrl::slot_OpenFilePath(const QString& strFile)
{
    OpenFile(strFile);
}

void CCenterCtrl::OpenFileWithViewIDImageID(const QString& strFile, int& nViewID, unsigned int& nImageID)
{
    nViewID = kNoView;
    nImageID = Vantor::CVObject::kNoUID;
    const QPointer<CImageViewerCtrl> pCtrl = ViewerCtrl(SelectMVC());
    if (pCtrl)
        pCtrl->LoadFile(strFile);
    if (!pCtrl) // destroyed with the centre while a password dialog was open
        return;
    nViewID = pCtrl->GetViewID();
    nImageID = pCtrl->GetImageID();
}

void CCenterCtrl::slot_OpenFile()
{
    const QPointer<CCenterCtrl> pThis = this;
    const QString strFile =
        ImageFileDialogs::ChooseFile(m_pView, QStringLiteral("Open File"), ImageFileDialogs::FilesFilter());
    if (pThis && !strFile.isEmpty())
        OpenFile(strFile);
}

void CCenterCtrl::slot_SaveFile()
{
    const QPointer<CImageViewerCtrl> pCtrl = ViewerCtrl(SelectMVC());
    if (!pCtrl)
        return;
    const QString strFile = ImageFileDialogs::ChooseImageToSave(m_pView);
    if (pCtrl && !strFile.isEmpty())
        pCtrl->SaveFile(strFile);
}

void CCenterCtrl::slot_SelectFiles(const std::vector<QFileInfo>& vctFiles)
{
    const auto it =
        std::find_if(vctFiles.begin(), vctFiles.end(), [](const QFileInfo& file) { return file.isFile(); });
    if (it != vctFiles.end())
        OpenFile(it->filePath());
}

void CCenterCtrl::slot_Convert()
{
    for (const SMVCItem& item : m_vctMVC)
        if (auto* pCtrl = ViewerCtrl(item))
            pCtrl->Convert();
}

void CCenterCtrl::RelayTool(const QString& strTool, const CImage2DProcessBaseCtrl& ctrl)
{
    using C = CImage2DProcessBaseCtrl;
    connect(&ctrl, &C::signal_Started, this, [this, strTool] { Q_EMIT signal_ProcessStarted(strTool); });
    connect(&ctrl, &C::signal_Ended, this, [this, strTool] { Q_EMIT signal_ProcessEnded(strTool); });
    connect(&ctrl, &C::signal_Failed, this,
            [this, strTool](const QString& strReason) { Q_EMIT signal_ProcessFailed(strTool, strReason); });
}

QStringList CCenterCtrl::GetToolTitles() const
{
    return m_pTools->Titles();
}

int CCenterCtrl::RegisterOperation(const SProcessOperation& operation)
{
    return m_pTools->Add(operation);
}

void CCenterCtrl::OpenTool(int nTool)
{
    m_pTools->Open(nTool, m_pView);
}

void CCenterCtrl::OpenTool(int nTool, int nViewID)
{
    if (auto* pTool = m_pTools->Open(nTool, m_pView))
        pTool->WorkOn(ViewerName(nViewID));
}

void CCenterCtrl::slot_OpenMedianTool()
{
    OpenTool(ECenterTool_Median);
}

void CCenterCtrl::OpenMedianTool(int nViewID)
{
    OpenTool(ECenterTool_Median, nViewID);
}

void CCenterCtrl::slot_OpenSobelTool()
{
    OpenTool(ECenterTool_Sobel);
}

void CCenterCtrl::OpenSobelTool(int nViewID)
{
    OpenTool(ECenterTool_Sobel, nViewID);
}

void CCenterCtrl::slot_OpenOCRTool()
{
    OpenTool(ECenterTool_OCR);
}

void CCenterCtrl::OpenOCRTool(int nViewID)
{
    OpenTool(ECenterTool_OCR, nViewID);
}

void CCenterCtrl::SetLinked(bool bLinked, int nLeader)
{
    m_pCompare->SetLinked(bLinked, nLeader);
}

bool CCenterCtrl::IsLinked() const
{
    return m_pCompare->IsLinked();
}

void CCenterCtrl::AddDifference(int nViewID, int nOther)
{
    m_pCompare->AddDifference(nViewID, nOther);
}

void CCenterCtrl::ShowOther(int nViewID, int nOther)
{
    m_pCompare->ShowOther(nViewID, nOther);
}

void CCenterCtrl::HideOther()
{
    m_pCompare->HideOther();
}

CImageViewerCtrl* CCenterCtrl::FindByViewID(int nViewID) const
{
    for (const SMVCItem& item : m_vctMVC) {
        auto* pCtrl = ViewerCtrl(item);
        if (pCtrl && pCtrl->GetViewID() == nViewID)
            return pCtrl;
    }
    return nullptr;
}

void CCenterCtrl::CloseCurrentImage(int nViewID)
{
    if (auto* pCtrl = FindByViewID(nViewID))
        pCtrl->CloseCurrentImage();
}

void CCenterCtrl::AddRectangle(int nViewID, std::shared_ptr<CImageView2DDrawableGeometry> pObject)
{
    if (auto* pCtrl = FindByViewID(nViewID))
        pCtrl->AddRectangle(std::move(pObject));
}

const SMVCItem* CCenterCtrl::ItemAt(int nIndex) const
{
    const bool bInRange = nIndex >= 0 && static_cast<std::size_t>(nIndex) < m_vctMVC.size();
    return bInRange ? &m_vctMVC[static_cast<std::size_t>(nIndex)] : nullptr;
}

std::shared_ptr<CImageView2DDrawableObject> CCenterCtrl::Get2DDrawableObject(int nIndex,
                                                                             unsigned int nUID) const
{
    const SMVCItem* pItem = ItemAt(nIndex);
    auto* pCtrl = pItem ? ViewerCtrl(*pItem) : nullptr;
    if (!pCtrl)
        return nullptr;
    for (const auto& pObject : pCtrl->Get2DDrawableObjects())
        if (pObject->GetUID() == nUID)
            return pObject;
    return nullptr;
}

bool CCenterCtrl::Delete2DDrawableObject(int nIndex, unsigned int nUID)
{
    const SMVCItem* pItem = ItemAt(nIndex);
    auto* pCtrl = pItem ? ViewerCtrl(*pItem) : nullptr;
    return pCtrl && pCtrl->Delete2DDrawableObject(nUID);
}

std::shared_ptr<Vantor::Algorithms::CImage> CCenterCtrl::FindImage(const QString& strName)
{
    if (!m_pModel || !m_pView)
        return nullptr;
    const int nCount = CellCount();
    const SMVCItem item = nCount < 2 ? m_vctMVC.front() : FindByName(strName, nCount);
    auto* pCtrl = ViewerCtrl(item);
    return pCtrl ? pCtrl->GetImage() : nullptr;
}

void CCenterCtrl::RegisterGeometryAction(const QString& strName, const QIcon& icon,
                                         std::function<void(int, unsigned int)> func)
{
    for (const SMVCItem& item : m_vctMVC)
        if (auto* pCtrl = ViewerCtrl(item))
            pCtrl->RegisterGeometryAction(strName, icon, func);
}
