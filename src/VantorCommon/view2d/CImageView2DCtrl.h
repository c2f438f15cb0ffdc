// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/Export.h>
#include <VantorCommon/shell/center/SCenterOptions.h>
#include <VantorCommon/shell/mvc/CBaseCtrl.h>

#include <QPointF>
#include <QString>
#include <functional>
#include <memory>
#include <vector>

class CAnnotationStore;
class CImageView2D;
class CImageView2DDrawableGeometry;
class CImageView2DDrawableObject;
class CImageView2DGeometryModel;
class CImageView2DModel;
class CImageView2DToolModel;
class CPropertyDockView;
class CStatusBarDockView;
class CToolBoxDockView;
enum EAnnotationsGone : int;
struct SImageChange;

namespace Vantor::Algorithms
{
class CImage;
}

/// The controller of a 2D view: images and files, the clipboard, undo and redo, and the slots of its
/// gestures.
///
/// Models, view and docks are not owned; any of them may be null or destroyed first, and an operation without
/// its target does nothing. The controller owns its undo history, its snip tool, and its three panels (tools,
/// properties, status), which it puts into the docks when its view becomes active. GUI thread only.
class VANTORCOMMON_EXPORT CImageView2DCtrl : public CBaseCtrl
{
    Q_OBJECT

public:
    /// @{
    /// Shared with the models, the undo steps and other viewers.
    using ImagePtr = std::shared_ptr<Vantor::Algorithms::CImage>;
    using ObjectPtr = std::shared_ptr<CImageView2DDrawableObject>;
    /// @}

    /// Makes the panels and the snip tool and connects the view.
    CImageView2DCtrl(CImageView2DModel* pModel, CImageView2DGeometryModel* pGeometryModel,
                     CImageView2DToolModel* pToolModel, CImageView2D* pView,
                     CToolBoxDockView* pToolBoxDockView, CPropertyDockView* pPropertyDockView,
                     CStatusBarDockView* pStatusBarDockView);
    ~CImageView2DCtrl() override;

    /// @{
    /// Acts, and returns true, only while the view has the keyboard focus. First undoes a drag in progress.
    bool Undo() override;
    bool Redo() override;
    /// @}
    /// @{
    /// Whether there is a step for Undo or Redo, wherever the focus is.
    bool CanUndo() const;
    bool CanRedo() const;
    /// @}
    /// The options of the centre; all off at first. They apply from the next operation on.
    void SetOptions(const SCenterOptions& sOptions);
    /// Replaces the list by an image or the pages of a PDF document and drops the annotations. Deliberate: a
    /// failure is logged and leaves an empty list without annotations (unless
    /// SCenterOptions::bKeepOnFailedLoad). Deliberate: "pdf" or "PDF" after any character anywhere in the
    /// path, even in a folder's name, means a document (unless SCenterOptions::bReaderByContent).
    void LoadFile(const QString& strPath);
    /// The image in a list of one; an empty list and a log line if it cannot be loaded.
    std::vector<ImagePtr> LoadImage(const QString& strPath);
    /// One image per page, in page order, up to the first that cannot be rendered. Asks for a password if
    /// necessary, and blocks meanwhile. Logs a failure; after a password a message box shows it, too.
    /// Deliberate: the setting "PDF_RESOLUTION_Y" (dots per inch, 144 by default) holds for both directions.
    std::vector<ImagePtr> LoadPDF(const QString& strPath);
    /// Appends an image or the pages of a document, the first of which becomes current. Annotations stay.
    void AddImage(const QString& strPath);
    /// Saves the current image in the format of the suffix. Logs a failure.
    void SaveFile(const QString& strPath);
    /// Puts a copy of the current image, if any, on the clipboard, as a picture.
    void CopyToClipBoard();
    /// True shows the first registered main window, maximised (with SCenterOptions::bRestoreAfterCapture as
    /// before it was minimised) and active; false minimises it.
    void SetApplicationVisible(bool bVisible);
    /// Drops the current image and all annotations, without a way back.
    void CloseCurrentImage();
    /// Replaces one image of the list and drops all annotations, also when the index is not 0 to count - 1.
    void ChangeImage(ImagePtr pImage, int nIndex);
    /// Replaces the current image and drops the annotations, without a way back; see ChangeCurrentImage.
    void SetCurrentImage(ImagePtr pImage);
    /// The same, with the reason that the store of annotations reports.
    void SetCurrentImage(ImagePtr pImage, EAnnotationsGone eReason);
    /// Appends an image. @return whether there was a model
    bool PushImage(ImagePtr pImage);
    /// The current image, which nobody may change; null without one.
    ImagePtr GetCurrentImgage() const;
    /// Replaces the current image and drops the annotations, as an undoable step; ignores null.
    void ChangeCurrentImage(ImagePtr pImage);
    /// The same for an image made from the current one by a turn, a flip or a cut.
    void ChangeCurrentImage(ImagePtr pImage, const SImageChange& sChange);
    /// @{
    /// A quarter turn, counter-clockwise or clockwise, as an undoable step.
    void RotateLeft();
    void RotateRight();
    /// @}

    /// Changes an image, which nobody else holds, and says how that moves what is on it.
    /// @return 0, or non-zero with the image's reason
    using ImageEdit = std::function<int(Vantor::Algorithms::CImage& image, SImageChange& sChange)>;
    /// Changes a copy of the current image and shows that, an undoable step; nothing without an image. With
    /// SCenterOptions::bBackground a thread of a pool calls the edit, edits one after another.
    /// The job has the title; in a failure, strFailure, a sentence, stands before the reason in
    /// signal_Failed.
    void EditImage(const QString& strTitle, const QString& strFailure, ImageEdit edit);

    /// Adds a shape of any kind as an undoable step and selects only it; ignores null.
    void AddRectangle(std::shared_ptr<CImageView2DDrawableGeometry> pObject);
    /// Adds an object and selects only it. The commands call this and the next three functions.
    void AddDrawableObject(ObjectPtr pObject);
    /// @{
    /// Deletes an object, without an undoable step. @return whether it was there
    bool DeleteDrawableObject(ObjectPtr pObject);
    bool DeleteDrawableObject(unsigned int nUID);
    /// @}
    /// Moves the object so that the point is (dx, dy) from its top-left corner, all in image pixels.
    void MoveDrawableObject(ObjectPtr pObject, double dx, double dy, QPointF& point);
    /// Moves the handle within 10 widget pixels of `from` to `to`, less the resize offset; ignores the third.
    void ResizeDrawableObject(ObjectPtr pObject, const QPointF& from, const QPointF& to,
                              const QPointF& third);
    /// Deletes the selected objects, if there are any, as one undoable step.
    void DeleteSelectedObjects();
    /// The reach of a handle, 10 widget pixels, in image pixels; 0.0 without a view.
    double HandleTolerance() const;
    /// @{
    /// The models given at construction; null when they no longer exist.
    CImageView2DModel* GetImageModel() const;
    CImageView2DGeometryModel* GetGeometryModel() const;
    CImageView2DToolModel* GetToolModel() const;
    /// @}
    /// The annotations as a document, with their files and their steps. Never null; the controller owns it.
    CAnnotationStore* GetAnnotationStore() const;

public Q_SLOTS:
    /// Puts the controller's panels into the docks.
    void slot_Active();
    /// @{
    /// Ask for a file (an image or a document, an image, a document) and replace the list by it, as LoadFile
    /// does. These five block while the dialog is open; the controller may be deleted meanwhile.
    void slot_LoadFile();
    void slot_LoadImage();
    void slot_LoadPdf();
    /// Asks for files and appends their images.
    void slot_AddImage();
    /// Asks for a name (SCenterOptions::bProposeSaveName proposes one) and saves the current image.
    void slot_SaveImage();
    /// @}
    /// Appends the image files or the picture on the clipboard. Deliberate: text takes precedence over a
    /// picture and is ignored; documents are not opened, and failures are not logged.
    void slot_Paste();
    /// @{
    /// Call the functions above of these names: AddImage, CloseCurrentImage, CopyToClipBoard, Undo and so on.
    void slot_AddImageDragDrop(const QString& strPath);
    void slot_CloseImage();
    void slot_Copy();
    void slot_Undo();
    void slot_Redo();
    void slot_RotateLeft();
    void slot_RotateRight();
    void slot_DeleteDrawableObject();
    /// @}
    /// @{
    /// Call Previous, Next, SetCurrentIndex and Clear of the image model; annotations stay.
    void slot_Previous();
    void slot_Next();
    void slot_SelectImage(int nIndex);
    void slot_ClearImage();
    /// @}
    /// Minimises the main window and opens the snip tool on its screen.
    void slot_OpenSnipTool();
    /// Passes the position to the image model, in image coordinates.
    void slot_ChangeMousePosition(QPointF& mousePos);
    /// Selects the first annotation whose bounding rectangle contains the point (image coordinates) and opens
    /// its menu; if there is none, opens the menu of the image.
    void slot_ShowContextMenu(const QPointF& point);
    /// @{
    /// Set the mode of the tool model, which all viewers share; SelectShape sets that of any kind.
    void slot_ChangeSelectMode();
    void slot_ChangePanningMode();
    void slot_SelectROIRectangle();
    void slot_SelectROIEllipse();
    void slot_SelectROICircle();
    void slot_SelectROIPolygon();
    void slot_DrawRuler();
    void slot_SelectShape(int nMode);
    /// @}
    /// @{
    /// The drags of the drawing modes, in image coordinates. Doing shows a preview; End adds the shape as an
    /// undoable step and returns to selecting. Deliberate: no minimum size, a click makes a shape of 0 x 0. A
    /// circle is an ellipse with equal axes about the press point; a line becomes a ruler. A release within
    /// HandleTolerance of its first point closes a polygon of three or more edges. DrawShape draws the kind
    /// of the current mode; kinds drawn by clicks close as a polygon does.
    void slot_DrawRectangleStart(QPointF& pointStart);
    void slot_DrawRectangleDoing(QPointF& pointStart, QPointF& pointEnd);
    void slot_DrawRectangleEnd(QPointF& pointStart, QPointF& pointEnd);
    void slot_DrawEllipseStart(QPointF& pointStart);
    void slot_DrawEllipseDoing(QPointF& pointStart, QPointF& pointEnd);
    void slot_DrawEllipseEnd(QPointF& pointStart, QPointF& pointEnd);
    void slot_DrawCircleStart(QPointF& pointStart);
    void slot_DrawCircleDoing(QPointF& pointStart, QPointF& pointEnd);
    void slot_DrawCircleEnd(QPointF& pointStart, QPointF& pointEnd);
    void slot_DrawLineStart(QPointF& pointStart);
    void slot_DrawLineDoing(QPointF& pointStart, QPointF& pointEnd);
    void slot_DrawLineEnd(QPointF& pointStart, QPointF& pointEnd);
    void slot_DrawPolygonStart(QPointF& pointStart);
    void slot_DrawPolygonDoing(QPointF& pointStart, QPointF& pointEnd);
    void slot_DrawPolygonWaiting(QPointF& point);
    void slot_DrawPolygonEnd(QPointF& pointStart, QPointF& pointEnd);
    void slot_DrawShapeStart(QPointF& pointStart);
    void slot_DrawShapeDoing(QPointF& pointStart, QPointF& pointEnd);
    void slot_DrawShapeWaiting(QPointF& point);
    void slot_DrawShapeEnd(QPointF& pointStart, QPointF& pointEnd);
    /// @}
    /// Looks for a handle of any annotation within HandleTolerance; the cursor shows whether there is one.
    void slot_CheckResizeRotate(QPointF& point);
    /// @{
    /// The drag of the selecting mode, in image coordinates: pulls a handle, moves the selection, or selects
    /// annotations with a rubber band; with Ctrl a press adds to the selection. End makes it an undoable
    /// step. Deliberate: the SelectResize slots do nothing, because resizing is part of this drag.
    void slot_SelectMovingStart(QPointF& pointStart);
    void slot_SelectMovingDoing(QPointF& pointStart, QPointF& pointEnd);
    void slot_SelectMovingEnd(QPointF& pointStart, QPointF& pointEnd);
    void slot_SelectResizeStart(QPointF& pointStart);
    void slot_SelectResizeDoing(QPointF& pointStart, QPointF& pointEnd);
    void slot_SelectResizeEnd(QPointF& pointStart, QPointF& pointEnd);
    /// @}
    /// Delete and Backspace delete the selection; Escape leaves a drawing mode while the view is visible.
    void slot_PressKey(int nKey);

Q_SIGNALS:
    /// @{
    /// The controller has loaded or added a file (once for a document of many pages), or saved the image.
    void signal_FileOpened(const QString& strPath);
    void signal_FileSaved(const QString& strPath);
    /// @}
    /// An image has been saved, which one; before signal_FileSaved.
    void signal_ImageSaved(const QString& strPath, unsigned int nImageUID);
    /// Loading, adding, pasting, saving, rotating or capturing failed: one line in English with path and
    /// reason.
    void signal_Failed(const QString& strMessage);
    /// The user has asked for the next image (1) or the previous one (-1) at that end of the list.
    void signal_BeyondList(int nStep);
    /// @{
    /// Rendering the pages of a document keeps the thread busy: the number of pages, and of those done.
    void signal_ChangeProgressMaxRange(int nMaxRange);
    void signal_ChangeProgressValue(int nValue);
    /// @}

private:
    struct SParts;
    const std::unique_ptr<SParts> m_pParts;
};
