// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <Vantor/CVObject.h>
#include <VantorCommon/Export.h>

#include <QBrush>
#include <QObject>
#include <QPen>
#include <QPointF>
#include <QRectF>
#include <QString>
#include <QVariant>
#include <memory>

class QPainter;

namespace Vantor::Algorithms
{
class CCalibration;
}

namespace Vantor::Geometry
{
class CGeometry;
}

/// The kind of a drawable object. The values are part of the interface; 2 is used by no class.
enum EImageView2DDrawbleObjectType : int {
    EImageView2DDrawbleObjectType_Text = 0,     ///< CImageView2DDrawableText
    EImageView2DDrawbleObjectType_Geometry = 1, ///< CImageView2DDrawableGeometry
    EImageView2DDrawbleObjectType_Ruler = 3     ///< CImageView2DDrawableRuler
};

/// A text that views write beside an annotation.
struct SObjectLabel {
    QString strText;        ///< empty: nothing is written
    QPointF ptAnchor;       ///< where its baseline begins, in image coordinates
    QString strSecond = {}; ///< a line beneath; empty: there is none
};

/// One annotation on a 2D image view, with the editing state that the user interface needs.
///
/// Objects are always held by std::shared_ptr: the geometry model, the undo commands and the controller share
/// them, and an object lives as long as any of them holds it. It has no parent object. Coordinates are image
/// pixels. GUI thread only.
class VANTORCOMMON_EXPORT CImageView2DDrawableObject : public QObject, public Vantor::CVObject
{
    Q_OBJECT

public:
    /// Unselected, with its name displayed, no pen and no brush.
    explicit CImageView2DDrawableObject(EImageView2DDrawbleObjectType eType);
    ~CImageView2DDrawableObject() override;

    /// The name given by SetName, otherwise "Object_" and the identifier.
    virtual QString GetName() const;
    /// The bounding rectangle; the null rectangle when there is nothing to bound.
    virtual QRectF GetBoundary() const = 0;
    /// Translates the object so that the top-left corner of its boundary lies on the point.
    virtual void MoveTopLeftTo(const QPointF& point) = 0;
    /// Looks for a resize handle near a point, in image coordinates. The last argument is accepted and
    /// ignored; callers pass 0.0.
    /// @param dblTolerance  image pixels, the bound included
    /// @param point         the point near which the handle must lie
    /// @param handle        receives the exact position of the first such handle; untouched without one
    /// @return whether there is one
    virtual bool FindResizePoint(double dblTolerance, const QPointF& point, QPointF& handle,
                                 double) const = 0;
    /// Moves a handle, given by the exact position that FindResizePoint told, to a new place. A point that is
    /// no handle changes nothing.
    virtual void MoveResizePoint(const QPointF& handle, const QPointF& newPoint) = 0;

    /// What views write beside the object; nothing in the base.
    virtual SObjectLabel GetLabel() const { return {}; }
    /// @{
    /// Position and form, which undoable steps keep: return a copy of them, and restore such a copy, with a
    /// signal. The base returns null and cannot restore.
    virtual std::shared_ptr<Vantor::Geometry::CGeometry> CloneShape() const { return nullptr; }
    virtual void RestoreShape(const Vantor::Geometry::CGeometry&) {}
    /// @}
    /// Paints what lies beneath the outline of a shape and the label; nothing in the base.
    /// @param painter  maps image coordinates to the view; its pen and brush are those of the object, and
    ///                 the function leaves it as it found it
    /// @param s        the size of a widget pixel in image pixels
    virtual void PaintContents(QPainter& painter, double s) const;
    /// How far that reaches beyond the boundary, in widget pixels; 0 in the base.
    virtual double GetReach() const { return 0.0; }
    /// Tells what pixels are in units, to shapes that show it; CAnnotationStore calls it. Files do not keep
    /// it with the object. The base ignores it.
    /// @param calibration  of the image
    /// @param bLabel       labels tell units, too, see SCenterOptions::bCalibratedRuler
    virtual void SetCalibration(const Vantor::Algorithms::CCalibration& calibration, bool bLabel);

    /// The kind given at construction; it never changes.
    EImageView2DDrawbleObjectType GetType() const { return m_eType; }

    /// @{
    /// Whether the object is selected. An equal value changes nothing and emits nothing.
    void SetSelected(bool bSelected);
    bool GetSelected() const { return m_bSelected; }
    /// @}

    /// @{
    /// Whether the name is written beside the object. An equal value emits nothing.
    void SetDisplayName(bool bDisplayName);
    bool GetDisplayName() const { return m_bDisplayName; }
    /// @}

    /// @{
    /// The vector from the top-left corner of the boundary to the mouse while the object is dragged, in image
    /// pixels. A point that is equal by Qt's fuzzy comparison (1e-12) changes nothing and emits nothing.
    void SetMouseOffset(const QPointF& offset);
    QPointF GetMouseOffset() const { return m_ptMouseOffset; }
    /// @}

    /// @{
    /// A free slot for callers; changing it emits nothing.
    void SetExtraInfo(QVariant varInfo);
    QVariant GetExtraInfo() const { return m_varExtraInfo; }
    /// @}

    /// @{
    /// The object's own colours, width (widget pixels) and fill; views paint by them only with
    /// SCenterOptions::bOwnColors, and by theirs while neither is given. Deliberate: pen and brush are stored
    /// and announced even when they are equal to the present ones.
    void SetPen(const QPen& pen);
    QPen GetPen() const { return m_pen; }
    void SetBrushFilled(const QBrush& brush);
    QBrush GetBrushFilled() const { return m_brushFilled; }
    /// @}

    /// Names the object: from the first different name on, GetName returns the stored name. An equal name
    /// changes nothing, so with the empty name a new object stays named by its identifier.
    void SetName(const QString& strName);
    /// Whether it was given a name.
    bool IsNamed() const { return m_bNameSet; }
    /// Back to a name that a step or a file has kept; unnamed, it is called by its identifier again.
    void RestoreName(const QString& strName, bool bNamed);

    /// @{
    /// A locked object cannot be moved, reshaped or deleted by hand; steps of a program change it as any
    /// other. Off at first; an equal value emits nothing.
    void SetLocked(bool bLocked);
    bool IsLocked() const { return m_bLocked; }
    /// @}
    /// @{
    /// An object that is not visible is neither painted nor hit. On at first; an equal value emits nothing.
    void SetVisible(bool bVisible);
    bool IsVisible() const { return m_bVisible; }
    /// @}
    /// @{
    /// A UUID in lower case without braces, by which files and sessions know the object; made at first use
    /// and kept for life. Unlike GetUID it stays the same when the program runs again.
    QString GetId() const;
    void SetId(const QString& strId);
    /// @}
    /// Grows whenever something changes that a file of annotations keeps; selecting and dragging towards a
    /// place do not count.
    unsigned int GetRevision() const { return m_nRevision; }

    /// CVObject's two comparisons of numbers.
    using Vantor::CVObject::CompareEqual;
    /// Both coordinates equal by CVObject::CompareEqual.
    static bool CompareEqual(const QPointF& a, const QPointF& b);
    /// a equals b and c equals d by CVObject::CompareEqual.
    static bool CompareEqual(double a, double b, double c, double d);

Q_SIGNALS:
    /// Something that the user can see has changed; carries the object's own identifier.
    void signal_ChangeDrawableObjectProperty(unsigned int nUID);

protected:
    /// Emits signal_ChangeDrawableObjectProperty, for a change that a file keeps.
    void NotifyChange();
    /// The stored name while one was given, otherwise the prefix and the identifier.
    QString NameOr(const QString& strPrefix) const;

private:
    const EImageView2DDrawbleObjectType m_eType;
    QString m_strName;
    bool m_bNameSet = false;
    bool m_bSelected = false;
    bool m_bDisplayName = true;
    bool m_bLocked = false;
    bool m_bVisible = true;
    mutable QString m_strId;
    unsigned int m_nRevision = 0;
    QVariant m_varExtraInfo;
    QPointF m_ptMouseOffset;
    QPen m_pen{Qt::NoPen};
    QBrush m_brushFilled{Qt::NoBrush};
};
