// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/Export.h>
#include <VantorCommon/shell/center/SCenterOptions.h>
#include <VantorCommon/shell/mvc/CBaseCtrl.h>
#include <VantorCommon/shell/mvc/CMVCManager.h>

#include <QFileInfo>
#include <QPointer>
#include <QString>
#include <QStringList>
#include <functional>
#include <memory>
#include <vector>

class CCenterCtrlTools;
class CCenterModel;
class CCenterView;
class CImage2DProcessBaseCtrl;
class CImageView2DDrawableGeometry;
class CImageView2DDrawableObject;
class CImageView2DToolModel;
class CImageViewerCtrl;
class CPropertyDockView;
class CStatusBarDockView;
class CToolBoxDockView;
class QIcon;
struct SProcessOperation;

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
    /// Makes the four viewers and registers the triple of the centre. Everything may be null: without docks
    /// their panels are shown nowhere, without a view the viewers belong to the controller.
    CCenterCtrl(CCenterModel* pModel, CCenterView* pView, CToolBoxDockView* pToolBoxDockView,
                CPropertyDockView* pPropertyDockView, CStatusBarDockView* pStatusBarDockView);
    ~CCenterCtrl() override;

    /// @{
    /// Asked of every viewer; only the one with the keyboard focus acts. False always.
    bool Undo() override;
    bool Redo() override;
    /// @}

    /// Hands the options to every viewer; they hold from the next operation on.
    void SetOptions(const SCenterOptions& sOptions);
    /// The options that were set last; all off at first.
    const SCenterOptions& GetOptions() const { return m_sOptions; }

    /// Sets the model's grid: 1 x 1, 1 x 2 and 2 x 2 are laid out as one expects. Deliberate: rows come first
    /// here, columns in the model.
    void ChangeLayout(int nRow, int nColumn);
    /// The only viewer shown, or the one that the user picks; empty when cancelled. Deliberate: one name is
    /// offered for each cell of the grid, whether there is a viewer of that name or not; without one the
    /// result is empty.
    SMVCItem SelectMVC();

    /// Shows the images of a file in the viewer that SelectMVC gives, in place of what it held; annotations
    /// go. A file that cannot be read is logged and leaves an empty viewer, see SCenterOptions.
    void OpenFile(const QString& strFile);
    /// OpenFile, and tells where the file went.
    /// @param strFile   a path
    /// @param nViewID   the viewer, -1 when none was chosen
    /// @param nImageID  the image that it shows now; 0xFFFFFFFF when there is none
    void OpenFileWithViewIDImageID(const QString& strFile, int& nViewID, unsigned int& nImageID);
    /// Drops the viewer's current image and all its annotations; no way back.
    void CloseCurrentImage(int nViewID);
    /// Adds a shape to the viewer and selects it alone, an undoable step; any kind of geometry will do.
    void AddRectangle(int nViewID, std::shared_ptr<CImageView2DDrawableGeometry> pObject);
    /// The annotation with that identifier in the viewer with that index, 0 to 3, which is the identifier of
    /// the viewer too; null when there is no such viewer or object.
    std::shared_ptr<CImageView2DDrawableObject> Get2DDrawableObject(int nIndex, unsigned int nUID) const;
    /// Deletes it, without a way back; false when there is no such viewer or object.
    bool Delete2DDrawableObject(int nIndex, unsigned int nUID);
    /// The current image of the viewer with that name ("Image View [2]"). Deliberate: while one viewer is
    /// shown the name is not looked at.
    std::shared_ptr<Vantor::Algorithms::CImage> FindImage(const QString& strName);
    /// The titles of the processing tools, the library's and then the registered ones, by their index.
    QStringList GetToolTitles() const;
    /// Appends a tool that is made of an operation.
    /// @return its index; -1, and nothing is appended, when it has no title or that of another tool, nothing
    ///         to apply, or a default that is out of its range
    int RegisterOperation(const SProcessOperation& operation);
    /// Shows a tool, which is made at the first call and belongs to the centre. It is modeless. Another index
    /// than that of a tool is ignored.
    void OpenTool(int nTool);
    /// @{
    /// OpenTool, and the tool works on the viewer with that identifier: it is the one chosen in the dialog,
    /// with its selected shape as the region, or the whole image where none is selected.
    void OpenTool(int nTool, int nViewID);
    void OpenMedianTool(int nViewID);
    void OpenSobelTool(int nViewID);
    void OpenOCRTool(int nViewID);
    /// @}
    /// Adds an entry to the menu of annotations of every viewer, behind those that are there.
    /// @param strName  the text of the entry
    /// @param icon     may be null
    /// @param func     called with the identifiers of the viewer and of the annotation under the
    ///                 mouse; it lives as long as the viewers. An empty one does nothing
    void RegisterGeometryAction(const QString& strName, const QIcon& icon,
                                std::function<void(int, unsigned int)> func);

Q_SIGNALS:
    /// @{
    /// Of the processing tools that the centre has made, by the title of their dialog: a run begins (the
    /// thread is busy until it ends), is over, could not be done and why.
    void signal_ProcessStarted(const QString& strTool);
    void signal_ProcessEnded(const QString& strTool);
    void signal_ProcessFailed(const QString& strTool, const QString& strReason);
    /// @}

public Q_SLOTS:
    /// @{
    /// One viewer, two side by side, four in two rows.
    void slot_ChangeLayout1x1();
    void slot_ChangeLayout2x1();
    void slot_ChangeLayout2x2();
    /// @}
    /// OpenFile.
    void slot_OpenFilePath(const QString& strFile);
    /// Asks for a file and opens it.
    void slot_OpenFile();
    /// Asks for a viewer and a name, and saves the viewer's current image.
    void slot_SaveFile();
    /// Opens the first entry that is a regular file.
    void slot_SelectFiles(const std::vector<QFileInfo>& vctFiles);
    /// CImageViewerCtrl::Convert of every viewer, which does nothing yet.
    void slot_Convert();
    /// @{
    /// OpenTool.
    void slot_OpenMedianTool();
    void slot_OpenSobelTool();
    void slot_OpenOCRTool();
    /// @}

private:
    void CreateViewer(int nIndex);
    void ConnectCentre();
    void RelayTool(const QString& strTool, const CImage2DProcessBaseCtrl& ctrl);
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
    SCenterOptions m_sOptions;
    std::unique_ptr<CCenterCtrlTools> m_pTools;
};
