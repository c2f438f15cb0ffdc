// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <Vantor/annotation/Annotations.h>
#include <VantorCommon/Export.h>
#include <VantorCommon/shell/center/SCenterOptions.h>

#include <QObject>
#include <QPointF>
#include <QString>
#include <functional>
#include <memory>
#include <vector>

class CCommand;
class CImageView2DCtrl;
class CImageView2DDrawableObject;
struct SShapeData;

/// Why annotations have left a view at once.
enum EAnnotationsGone : int {
    EAnnotationsGone_Loaded,   ///< another file was opened
    EAnnotationsGone_Turned,   ///< the image was turned, as a step that can be undone
    EAnnotationsGone_Filtered, ///< the image was changed otherwise, as a step that can be undone
    EAnnotationsGone_Closed,   ///< the image was closed
    EAnnotationsGone_Cleared   ///< somebody emptied the geometry model
};

/// The annotations of one 2D view as a document: to and from files, the steps of editing that need no mouse,
/// and whether there is something to save.
///
/// Every CImageView2DCtrl owns one, see its GetAnnotationStore. All steps go into the history of the
/// controller. Objects that are null or not in the view are skipped; a call that would change nothing makes
/// no step. GUI thread only; reading and writing files happens on a thread of the store's own.
class VANTORCOMMON_EXPORT CAnnotationStore : public QObject
{
    Q_OBJECT

public:
    /// @{
    /// Objects are shared with the models and the steps.
    using ObjectPtr = std::shared_ptr<CImageView2DDrawableObject>;
    using ObjectList = std::vector<ObjectPtr>;
    /// @}
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
    Vantor::Annotations::SDocument TakeDocument() const;
    /// Shows the annotations of a document's page in place of those that are there, as one step. Without
    /// SCenterOptions::bAnnotationsPerImage that is the page that is shown, and the others are kept.
    void Apply(const Vantor::Annotations::SDocument& document);
    /// Takes the annotations as they are for saved, also when somebody decides not to save them.
    void SetSaved();
    /// Whether the annotations differ from what was last saved, loaded or begun with; steps that are undone
    /// count as not made.
    bool HasUnsaved() const;

    /// Writes the annotations; signal_Saved tells the end. The format is a name of
    /// Vantor::Annotations::GetFormats; only in our own are they saved, in others they are exported.
    void Save(const QString& strPath,
              const QString& strFormat = QLatin1String(Vantor::Annotations::kOwnFormat));
    /// Reads annotations of any format and applies them, which counts as saved; signal_Loaded tells the end.
    /// They are dropped, and told as a failure, when another image is shown by then.
    void Load(const QString& strPath);
    /// The file beside the current image that keeps its annotations; empty for an image without a file.
    QString GetSidecarPath() const;

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
    /// What is selected, the topmost first.
    ObjectList GetSelected() const;
    /// Selects all that are visible, which is no step.
    void SelectAll();
    /// By how much copies beside their originals are moved to the right and down, in image pixels.
    static constexpr double kCopyOffset = 10.0;
    /// Adds copies, moved by an offset in image pixels, and selects them alone.
    /// @return the copies, the topmost first
    ObjectList Duplicate(const ObjectList& vctObjects, const QPointF& offset);
    /// The same with objects of a file, which get ids of their own; what cannot be painted is left out.
    ObjectList Paste(const std::vector<Vantor::Annotations::SObject>& vctObjects, const QPointF& offset);

    /// @{
    /// For the controller: a step that the store hears of, and the end of all annotations for a reason.
    std::unique_ptr<CCommand> Watch(std::unique_ptr<CCommand> pCommand);
    void Clear(EAnnotationsGone eReason);
    /// The same for the image at an index of the list, which has been replaced.
    void ClearImage(int nIndex);
    /// Whether annotations are taken along when their image changes.
    bool IsCarrying() const;
    /// @}

Q_SIGNALS:
    /// HasUnsaved has changed.
    void signal_ChangeUnsaved(bool bUnsaved);
    /// A step has been made, undone or redone.
    void signal_StepFinished();
    /// So many annotations have left the view at once; not when there were none.
    void signal_AnnotationsGone(EAnnotationsGone eReason, int nCount);
    /// @{
    /// The end of Save and Load; the report tells a failure or what was left out.
    void signal_Saved(const QString& strPath, const Vantor::Annotations::SReport& report);
    void signal_Loaded(const QString& strPath, const Vantor::Annotations::SReport& report);
    /// @}

private:
    struct SPrivate;
    class CWatched;

    void RunCall(std::function<void()> funcDo, std::function<void()> funcUndo);
    void SetOrder(const ObjectList& vctOrder);
    ObjectList Present(const ObjectList& vctObjects) const;
    void ChangeAll(const ObjectList& vctObjects, bool bValue, bool (CImageView2DDrawableObject::*get)() const,
                   void (*set)(CImageView2DDrawableObject&, bool));

    std::unique_ptr<SPrivate> m_p;
};
