// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <Vantor/annotation/Annotations.h>
#include <Vantor/measure/CCalibration.h>
#include <VantorCommon/Export.h>
#include <VantorCommon/shell/center/SCenterOptions.h>

#include <QObject>
#include <QPointF>
#include <QSize>
#include <QString>
#include <functional>
#include <memory>
#include <string>
#include <vector>

class CCommand;
class CImageView2DCtrl;
class CImageView2DDrawableObject;
struct SImageChange;
struct SShapeData;

namespace Vantor::Algorithms
{
class CImage;
}

/// Why annotations have left a view at once.
enum EAnnotationsGone : int {
    EAnnotationsGone_Loaded,   ///< another file was opened
    EAnnotationsGone_Turned,   ///< the image was turned, as a step that can be undone
    EAnnotationsGone_Filtered, ///< the image was changed otherwise, as a step that can be undone
    EAnnotationsGone_Closed,   ///< the image was closed
    EAnnotationsGone_Cleared   ///< somebody emptied the geometry model
};

/// What CAnnotationStore::Save may replace.
enum EAnnotationsReplace : int {
    EAnnotationsReplace_Any,  ///< whatever stands there
    EAnnotationsReplace_Known ///< only what this store has loaded or saved there last
};

/// What to do with annotations that were made for an image of another size.
enum EOtherSize : int {
    EOtherSize_Keep,  ///< shows them where their numbers say
    EOtherSize_Scale, ///< shows them scaled, see Vantor::Annotations::ScalePage; they are unsaved then
    EOtherSize_Leave  ///< does not show them
};

/// The annotations of one 2D view as a document: to and from files, the steps of editing that need no mouse,
/// and whether there is something to save.
///
/// Every CImageView2DCtrl owns one, see its GetAnnotationStore. All steps go into the history of the
/// controller. Objects that are null or not in the view are skipped; a call that would change nothing makes
/// no step. GUI thread only; reading and writing files happens on a thread of the store's own.
///
/// Images are indices in the list of the view. With SCenterOptions::bAnnotationsPerImage an image stands for
/// its file, whose pages are one document; without it all images stand for the one set of the view. Files
/// have the places on the picture that is in the image's file, even while the view shows it turned, flipped
/// or cut.
class VANTORCOMMON_EXPORT CAnnotationStore : public QObject
{
    Q_OBJECT

public:
    /// @{
    /// Objects are shared with the models and the steps.
    using ObjectPtr = std::shared_ptr<CImageView2DDrawableObject>;
    using ObjectList = std::vector<ObjectPtr>;
    using ImagePtr = std::shared_ptr<Vantor::Algorithms::CImage>;
    /// @}
    /// Decides on a page, by the size of its image in pixels; may open a dialog.
    using AskSize = std::function<EOtherSize(const Vantor::Annotations::SPage& page, const QSize& size)>;
    /// In place of an index: the image that is shown.
    static constexpr int kShown = -1;
    /// Records a step and carries it out.
    using Execute = std::function<void(std::unique_ptr<CCommand>)>;

    /// For a controller, which outlives the store.
    CAnnotationStore(CImageView2DCtrl& ctrl, Execute execute);
    /// Waits for files that are being written.
    ~CAnnotationStore() override;

    /// The options of the centre, from the next operation on.
    void SetOptions(const SCenterOptions& sOptions);

    /// The annotations as they are now. What the last applied document had beside them, such as objects of
    /// kinds that are unknown here, stands in its place.
    Vantor::Annotations::SDocument TakeDocument(int nImage = kShown) const;
    /// Shows the annotations of a document in place of those that are there, as one step, which shows no
    /// other image. Without SCenterOptions::bAnnotationsPerImage only those of the page that is shown, and
    /// the others are kept.
    void Apply(const Vantor::Annotations::SDocument& document, int nImage = kShown);
    /// @{
    /// Takes the annotations as they are for saved, also when somebody decides not to save them.
    void SetSaved(); ///< all of them
    void SetSaved(int nImage);
    /// @}
    /// @{
    /// Whether the annotations differ from what was last saved, loaded or begun with; steps that are undone
    /// count as not made.
    bool HasUnsaved() const;           ///< any of them
    bool HasUnsaved(int nImage) const; ///< those of any page of the image's file
    bool IsUnsaved(int nImage) const;  ///< those of this page alone
    /// @}

    /// Writes the annotations; signal_Saved tells the end. The format is a name of
    /// Vantor::Annotations::GetFormats; only in our own are they saved, in others they are exported. A file
    /// that must not be replaced is a conflict, see SReport: another window or program has written it.
    void Save(const QString& strPath,
              const QString& strFormat = QLatin1String(Vantor::Annotations::kOwnFormat), int nImage = kShown,
              EAnnotationsReplace eReplace = EAnnotationsReplace_Any);
    /// Takes a file with this digest, see SReport, for one that this store has loaded.
    void SetKnownFile(const QString& strPath, const std::string& digest);
    /// Reads annotations of any format and applies them, which counts as saved; signal_Loaded tells the end.
    /// They are dropped, and told as a failure, when the image is gone by then, the annotations were changed
    /// or, with only one set, another image is shown. Pages of a document that were made at another
    /// resolution are scaled. A remark tells that the file of the image is another one than that which was
    /// annotated.
    void Load(const QString& strPath, int nImage = kShown);
    /// Load asks once for each file with a page that was made for an image of another size. Without a
    /// function the numbers are kept, and a remark tells it.
    void SetAskSize(AskSize ask);
    /// The absolute path of the file that the image comes from or was saved in; empty without one.
    QString GetImageFile(int nImage = kShown) const;
    /// The file beside the image that keeps its annotations; empty for an image without a file.
    QString GetSidecarPath(int nImage = kShown) const;
    /// Says which page it is, whatever its index, and image, becomes. Pages of a list that was loaded anew
    /// are others. 0 with only one set.
    int GetPageId(int nImage = kShown) const;
    /// What formats need to know of an image.
    Vantor::Annotations::SContext GetContext(int nImage = kShown) const;

    /// How many annotations RestoreCleared would bring back.
    int CountCleared() const;
    /// Shows the annotations that left the view at once last, whatever the reason, as they were then, as one
    /// step; of several pages those of the page that is shown, or else those of the first.
    void RestoreCleared();

    /// Gives a name. An empty one gives back the name that kind and number make.
    void Rename(const ObjectPtr& pObject, const QString& strName);
    /// Changes place, form and text to numbers as the object's kind has them in files.
    /// @return false when the kind has no shape with these numbers
    bool SetShape(const ObjectPtr& pObject, const SShapeData& data);
    /// Moves objects so that the topmost of them gets the index (0: top), the others follow it.
    void MoveTo(const ObjectList& vctObjects, int nIndex);
    /// @{
    /// Each by one place up or down; those that are at the end stay there.
    void Raise(const ObjectList& vctObjects);
    void Lower(const ObjectList& vctObjects);
    /// @}
    /// @{
    /// See CImageView2DDrawableObject. What becomes invisible is unselected.
    void SetLocked(const ObjectList& vctObjects, bool bLocked);
    void SetVisible(const ObjectList& vctObjects, bool bVisible);
    /// @}
    /// The annotations of an image, also of one that is not on show, the topmost first.
    ObjectList GetObjects(int nImage = kShown) const;
    /// What is selected, the topmost first.
    ObjectList GetSelected() const;
    /// Selects all that are visible, which is no step.
    void SelectAll();
    /// By how much copies beside their originals are moved to the right and down, in image pixels.
    static constexpr double kCopyOffset = 10.0;
    /// Adds copies, moved by an offset in image pixels, and selects them alone.
    /// @return the copies, the topmost first
    ObjectList Duplicate(const ObjectList& vctObjects, const QPointF& offset);
    /// Adds new objects and selects them alone.
    void Add(const ObjectList& vctObjects);
    /// The same with objects of a file, which get ids of their own; what cannot be painted is left out.
    ObjectList Paste(const std::vector<Vantor::Annotations::SObject>& vctObjects, const QPointF& offset);

    /// The same with a page of a file, at the places on the picture in the file of the image on show.
    ObjectList Import(const Vantor::Annotations::SPage& page);

    /// @{
    /// What the pixels of an image are in units, turned with the image; at first a unit is a pixel. It
    /// belongs to the page, as the annotations do, and is saved with them. Setting that of the image that is
    /// shown is a step.
    Vantor::Algorithms::CCalibration GetCalibration(int nImage = kShown) const;
    void SetCalibration(const Vantor::Algorithms::CCalibration& calibration);
    /// @}
    /// Tells a new object the calibration, before it is in the view.
    void Calibrate(CImageView2DDrawableObject& object) const;

    /// @{
    /// For the controller: a step that the store hears of, and the end of all annotations for a reason.
    std::unique_ptr<CCommand> Watch(std::unique_ptr<CCommand> pCommand);
    void Clear(EAnnotationsGone eReason);
    /// What goes from now on goes because a file is loaded, which Clear will say.
    void BeginLoading();
    /// The same for the image at an index of the list, which has been replaced.
    void ClearImage(int nIndex);
    /// Whether annotations are taken along when their image changes.
    bool IsCarrying() const;
    /// Says what could not be taken along on the page that is shown.
    void TellNotCarried();
    /// An image is about to become another one, by a known change.
    void FollowChange(const ImagePtr& pBefore, const ImagePtr& pAfter, const SImageChange& sChange);
    /// @}

Q_SIGNALS:
    /// Other annotations are unsaved than before, or none; bUnsaved is HasUnsaved.
    void signal_ChangeUnsaved(bool bUnsaved);
    /// A step has been made, undone or redone.
    void signal_StepFinished();
    /// GetCalibration has become another one, also because another page is shown.
    void signal_ChangeCalibration();
    /// So many annotations have left the view at once; not when there were none.
    void signal_AnnotationsGone(EAnnotationsGone eReason, int nCount);
    /// The image was turned, flipped or cut, and its annotations with it, but for so many of kinds that are
    /// unknown here: these stay in the file as they are, and so at their old places.
    void signal_NotCarried(int nCount);
    /// @{
    /// The end of Save and Load; the report tells a failure or what was left out.
    void signal_Saved(const QString& strPath, const Vantor::Annotations::SReport& report);
    void signal_Loaded(const QString& strPath, const Vantor::Annotations::SReport& report);
    /// @}

private:
    struct SPrivate;
    class CWatched;

    void ShowLoaded(const QString& strPath, int nId, const std::function<const char*()>& whyLate,
                    Vantor::Annotations::SReport report, Vantor::Annotations::SDocument& document);
    void RunCall(std::function<void()> funcDo, std::function<void()> funcUndo);
    void SetOrder(const ObjectList& vctOrder);
    ObjectList Present(const ObjectList& vctObjects) const;
    void ChangeAll(const ObjectList& vctObjects, bool bValue, bool (CImageView2DDrawableObject::*get)() const,
                   void (*set)(CImageView2DDrawableObject&, bool));

    std::unique_ptr<SPrivate> m_p;
};
