// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <QRect>
#include <QRectF>
#include <functional>
#include <memory>
#include <vector>

class CImageView2DDrawableObject;

namespace Vantor::Geometry
{
class CGeometry;
}

/// Remembers a widget's list of objects and the rectangle that each of them covers, and finds what a change
/// of the list or of its objects makes the widget paint again. It compares; an object tells by Touch what a
/// comparison does not see.
class CPaintRecord
{
public:
    using Object = CImageView2DDrawableObject;
    using ObjectPtr = std::shared_ptr<Object>;
    using ObjectList = std::vector<ObjectPtr>;
    /// The rectangle outside of which painting an object changes nothing, in widget pixels.
    using Extent = std::function<QRect(const Object&)>;

    /// Counts the object with this identifier as changed.
    void Touch(unsigned int nUID) { m_vctTouched.push_back(nUID); }
    /// The rectangles are void, because the mapping has changed; the next Follow measures all objects.
    void Forget() { m_vctItems.clear(); }
    /// Takes the list as it is now. @return what has to be painted again, in a few rectangles
    std::vector<QRect> Follow(const ObjectList& vctObjects, const Extent& extent);
    /// The objects, by their index in the list followed last, that may change a part of the widget.
    std::vector<std::size_t> Meeting(const QRect& part) const;

    /// The same area, or a larger one, in a few rectangles.
    static std::vector<QRect> Gather(std::vector<QRect> vctParts);

private:
    /// What an object looked like. The pointers are only compared.
    struct SItem {
        const Object* pObject;
        const Vantor::Geometry::CGeometry* pGeometry;
        QRectF boundary;
        unsigned int nUID;
        unsigned int nRevision;
        bool bSelected;
        QRect rect;
    };

    static SItem Describe(const Object& object);
    bool IsTouched(unsigned int nUID) const;
    bool IsSame(const SItem& a, const SItem& b) const;
    std::vector<QRect> Match(std::vector<SItem>& vctNew, std::size_t nBegin, std::size_t nEnd,
                             std::size_t nOldEnd, const std::function<void(SItem&)>& measure);

    std::vector<SItem> m_vctItems;
    std::vector<unsigned int> m_vctTouched;
};
