// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/Export.h>
#include <VantorCommon/shell/mvc/CBaseCtrl.h>
#include <VantorCommon/shell/mvc/CMVCManager.h>

#include <QFileInfo>
#include <QPointer>
#include <QString>
#include <functional>
#include <memory>
#include <vector>

class CCenterModel;
class CCenterView;
class CImageView2DDrawableGeometry;
class CImageView2DDrawableObject;
class CImageView2DToolModel;
class CImageViewerCtrl;
class CPropertyDockView;
class CStatusBarDockView;
class CToolBoxDockView;
class QIcon;

namespace Vantor::Algorithms
{
class CImage;
}

/// The controller of the centre: makes four viewers, "Image View [0]" to "Image View [3]", and directs what
/// addresses an image to the right one. Where more than one is shown and an operation needs one, the user
/// picks it in a dialog. It also makes the processing tools.
///
/// It owns the viewers' models and controllers, the tools and the shared tool model; the viewers belong to
/// the centre view; model, view and docks to the host, who keeps them alive until the controller is gone.
/// Operations that find no viewer do nothing and return an empty or zero result. GUI thread only.
class VANTORCOMMON_EXPORT CCenterCtrl : public CBaseCtrl
{
    Q_OBJECT

public:
    CCenterCtrl(CCenterModel* pModel, CCenterView* pView, CToolBoxDockView* pToolBoxDockView,
                CPropertyDockView* pPropertyDockView, CStatusBarDockView* pStatusBarDockView);
    ~CCenterCtrl() override;

    /// Asked of every viewer; only the one with the keyboard focus acts. False always.
    bool Undo() override;
    bool Redo() override;

    /// Deliberate: rows come first here, columns in the model.
    void ChangeLayout(int nRow, int nColumn);
    /// The only viewer shown, or the one that the user picks; empty when cancelled. Deliberate: one name is
    /// offered for each cell of the grid, whether there is a viewer of that name or not; without one the
    /// result is empty.
    SMVCItem SelectMVC();

    void OpenFile(const QString& strFile);
    /// Tells where the file went; both outputs are -1 (all bits set) when no viewer was chosen.
    void OpenFileWithViewIDImageID(const QString& strFile, int& nViewID, unsigned int& nImageID);
    void CloseCurrentImage(int nViewID);
    /// An undoable step.
    void AddRectangle(int nViewID, std::shared_ptr<CImageView2DDrawableGeometry> pObject);
    /// By the viewer's index; null when there is no such viewer or object.
    std::shared_ptr<CImageView2DDrawableObject> Get2DDrawableObject(int nIndex, unsigned int nUID) const;
    bool Delete2DDrawableObject(int nIndex, unsigned int nUID);
    /// The current image of the viewer with that name ("Image View [2]"). Deliberate: while one viewer is
    /// shown the name is not looked at.
    std::shared_ptr<Vantor::Algorithms::CImage> FindImage(const QString& strName);
    /// Adds an entry to the menu of annotations of every viewer.
    void RegisterGeometryAction(const QString& strName, const QIcon& icon,
                                std::function<void(int, unsigned int)> func);

Q_SIGNALS:
    /// Of the processing tools that the centre has made, by the title of their dialog: a run begins (the
    /// thread is busy until it ends), is over, could not be done and why.
    void signal_ProcessStarted(const QString& strTool);
    void signal_ProcessEnded(const QString& strTool);
    void signal_ProcessFailed(const QString& strTool, const QString& strReason);

public Q_SLOTS:
    void slot_ChangeLayout1x1();
    void slot_ChangeLayout2x1();
    void slot_ChangeLayout2x2();
    void slot_OpenFilePath(const QString& strFile);
    void slot_OpenFile();
    void slot_SaveFile();
    /// Opens the first entry that is a regular file.
    void slot_SelectFiles(const std::vector<QFileInfo>& vctFiles);
    void slot_Convert();
    /// Show a processing tool, which is made at the first call and belongs to the centre. It is modeless.
    void slot_OpenMedianTool();
    void slot_OpenSobelTool();
    void slot_OpenOCRTool();

private:
    void CreateViewer(int nIndex, CToolBoxDockView* pToolBoxDockView, CPropertyDockView* pPropertyDockView,
                      CStatusBarDockView* pStatusBarDockView);
    void ConnectCentre();
    /// Shows a tool and relays its signals.
    template <class Tool> void OpenTool(Tool& tool);
    int CellCount() const;
    SMVCItem FindByName(const QString& strName, int nCount) const;
    CImageViewerCtrl* FindByViewID(int nViewID) const;
    const SMVCItem* ItemAt(int nIndex) const;

    QPointer<CCenterModel> m_pModel;
    QPointer<CCenterView> m_pView;
    QPointer<CToolBoxDockView> m_pToolBoxDockView;
    QPointer<CPropertyDockView> m_pPropertyDockView;
    QPointer<CStatusBarDockView> m_pStatusBarDockView;
    std::unique_ptr<CImageView2DToolModel> m_pToolModel;
    std::vector<SMVCItem> m_vctMVC;
    struct STools;
    std::unique_ptr<STools> m_pTools;
};
