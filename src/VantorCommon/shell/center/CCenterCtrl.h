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

class CCenterCtrlCompare;
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

/// The controller of the centre: makes four viewers, "Image View [0]" to "Image View [3]", and directs
/// operations on an image to the right one. If an operation needs one viewer and several are shown, the user
/// picks one in a dialog. It also makes the processing tools.
///
/// It owns the viewers' models and controllers, the tools and the shared tool model; the centre view owns the
/// viewers; the host owns model, view and docks, which outlive the controller. Operations that find no viewer
/// do nothing and return an empty or zero result. GUI thread only.
class VANTORCOMMON_EXPORT CCenterCtrl : public CBaseCtrl
{
    Q_OBJECT

public:
    /// Makes the four viewers and registers the triple of the centre. Any argument may be null: without docks
    /// the panels are not shown, without a view the controller owns the viewers.
    CCenterCtrl(CCenterModel* pModel, CCenterView* pView, CToolBoxDockView* pToolBoxDockView,
                CPropertyDockView* pPropertyDockView, CStatusBarDockView* pStatusBarDockView);
    ~CCenterCtrl() override;

    /// @{
    /// Call every viewer; only the one with the keyboard focus acts. Always return false.
    bool Undo() override;
    bool Redo() override;
    /// @}

    /// Passes the options to every viewer; they apply from the next operation on.
    void SetOptions(const SCenterOptions& sOptions);
    /// The options as set last; all off at first.
    const SCenterOptions& GetOptions() const { return m_sOptions; }

    /// Sets the model's grid, of which the view lays out 1 x 1, 1 x 2 and 2 x 2 as expected. Deliberate: rows
    /// come first here, columns in the model.
    void ChangeLayout(int nRow, int nColumn);
    /// The only viewer shown, or the one that the user picks; empty when cancelled. Deliberate: the dialog
    /// offers one name for each cell of the grid, even without such a viewer; then the result is empty.
    SMVCItem SelectMVC();

    /// Replaces the images of the viewer that SelectMVC returns by those of a file and drops its annotations.
    /// A failure is logged and leaves an empty viewer, see SCenterOptions.
    void OpenFile(const QString& strFile);
    /// Calls OpenFile and returns where the images are.
    /// @param strFile   a path
    /// @param nViewID   set to the viewer, -1 when none was chosen
    /// @param nImageID  set to its current image, 0xFFFFFFFF when there is none
    void OpenFileWithViewIDImageID(const QString& strFile, int& nViewID, unsigned int& nImageID);
    /// Drops the viewer's current image and all its annotations, without undo.
    void CloseCurrentImage(int nViewID);
    /// Adds a shape with any kind of geometry to the viewer, as an undoable step, and selects only it.
    void AddRectangle(int nViewID, std::shared_ptr<CImageView2DDrawableGeometry> pObject);
    /// The annotation with that identifier in the viewer with that index, 0 to 3, which is also the viewer's
    /// identifier; null when there is no such viewer or object.
    std::shared_ptr<CImageView2DDrawableObject> Get2DDrawableObject(int nIndex, unsigned int nUID) const;
    /// Deletes it, without undo; false when there is no such viewer or object.
    bool Delete2DDrawableObject(int nIndex, unsigned int nUID);
    /// The current image of the viewer with that name ("Image View [2]"). Deliberate: the name is ignored
    /// while only one viewer is shown.
    std::shared_ptr<Vantor::Algorithms::CImage> FindImage(const QString& strName);
    /// The titles of the processing tools, by index, the library's first, then the registered ones.
    QStringList GetToolTitles() const;
    /// Appends a tool that consists of an operation.
    /// @return its index; -1, without a new tool, if the operation has no title or that of another tool, no
    ///         one function, or a default out of its range
    int RegisterOperation(const SProcessOperation& operation);
    /// Shows a tool, modeless. The first call makes it; the centre owns it. Ignores an index without a tool.
    void OpenTool(int nTool);
    /// @{
    /// Call OpenTool and choose the viewer with that identifier in the dialog, with its selected shape as the
    /// region, or the whole image without a selection.
    void OpenTool(int nTool, int nViewID);
    void OpenMedianTool(int nViewID);
    void OpenSobelTool(int nViewID);
    void OpenOCRTool(int nViewID);
    /// @}
    /// Zooms and pans the 2D views of all viewers that are shown together: first as the leader, then as the
    /// one in which the user acts. They show the same image point in the middle at the same zoom, or fitted
    /// images each. A cross marks in the others the point under the mouse. Off at first.
    void SetLinked(bool bLinked, int nLeader);
    bool IsLinked() const; ///< as SetLinked was called last
    /// Appends the difference of the current images of two viewers (MakeDifference) to the list of the first
    /// and shows it; a job with SCenterOptions::bBackground. A failure, such as different sizes, comes with
    /// the signal_Failed of the first viewer.
    void AddDifference(int nViewID, int nOther);
    /// @{
    /// Shows in the first viewer, at its zoom and place, the current image of the other one with its
    /// annotations, until HideOther. The lists, the readout and the mouse do not notice.
    void ShowOther(int nViewID, int nOther);
    void HideOther();
    /// @}
    /// Appends an entry to the menu of annotations of every viewer.
    /// @param strName  the text of the entry
    /// @param icon     may be null
    /// @param func     called with the identifiers of the viewer and of the annotation under the
    ///                 mouse; it lives as long as the viewers. An empty one does nothing
    void RegisterGeometryAction(const QString& strName, const QIcon& icon,
                                std::function<void(int, unsigned int)> func);

Q_SIGNALS:
    /// @{
    /// Of the centre's processing tools, with the title of their dialog: a run begins (and keeps the thread
    /// busy until it ends), has ended, or has failed, with the reason.
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
    /// Calls OpenFile.
    void slot_OpenFilePath(const QString& strFile);
    /// Asks for a file and opens it.
    void slot_OpenFile();
    /// Asks for a viewer and a name, and saves the viewer's current image.
    void slot_SaveFile();
    /// Opens the first entry that is a regular file.
    void slot_SelectFiles(const std::vector<QFileInfo>& vctFiles);
    /// Calls CImageViewerCtrl::Convert of every viewer, which does nothing.
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
    std::unique_ptr<CCenterCtrlCompare> m_pCompare;
};
