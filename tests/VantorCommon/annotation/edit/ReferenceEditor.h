// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <QPointF>
#include <QRectF>
#include <QString>
#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <memory>
#include <vector>

/// A plain second model of the editing of one view, written without a look at the sources: shapes are lists
/// of points, a step keeps what it changed. The test drives it beside the real thing and compares.
namespace Reference
{

enum class Kind { Rectangle, Ellipse, Line, Polygon };

/// A rectangle or an ellipse has two points, its raw corner and the opposite one.
struct Shape {
    Kind kind = Kind::Rectangle;
    std::vector<QPointF> points;

    bool IsBox() const { return kind == Kind::Rectangle || kind == Kind::Ellipse; }
    bool operator==(const Shape& other) const
    {
        const auto same = [](const QPointF& a, const QPointF& b) { return a.x() == b.x() && a.y() == b.y(); };
        return kind == other.kind &&
               std::equal(points.begin(), points.end(), other.points.begin(), other.points.end(), same);
    }
    QRectF Box() const
    {
        double l = points[0].x(), r = l, t = points[0].y(), b = t;
        for (const QPointF& p : points) {
            l = std::min(l, p.x()), r = std::max(r, p.x());
            t = std::min(t, p.y()), b = std::max(b, p.y());
        }
        return QRectF(l, t, r - l, b - t);
    }
    bool Hit(const QPointF& p) const
    {
        const QRectF box = Box();
        return box.width() > 0 && box.height() > 0 && p.x() >= box.left() && p.x() <= box.right() &&
               p.y() >= box.top() && p.y() <= box.bottom();
    }
    std::vector<QPointF> Handles() const
    {
        if (!IsBox())
            return points;
        const QPointF a = points[0], b = points[1];
        return {a, QPointF(b.x(), a.y()), b, QPointF(a.x(), b.y())};
    }
    /// The index of the first handle within the tolerance, or -1.
    int FindHandle(const QPointF& p, double tolerance) const
    {
        const auto handles = Handles();
        for (std::size_t i = 0; i < handles.size(); ++i)
            if (std::hypot(handles[i].x() - p.x(), handles[i].y() - p.y()) <= tolerance)
                return int(i);
        return -1;
    }
    void MoveHandle(int i, const QPointF& to)
    {
        if (!IsBox()) {
            points[std::size_t(i)] = to;
            return;
        }
        points[i == 0 || i == 3 ? 0 : 1].setX(to.x());
        points[i == 0 || i == 1 ? 0 : 1].setY(to.y());
    }
    void MoveTopLeftTo(const QPointF& to)
    {
        const QPointF delta = to - Box().topLeft();
        for (QPointF& p : points)
            p += delta;
    }
};

struct Object {
    unsigned int uid = 0; ///< 0: not known yet
    Shape shape;
    bool selected = false;
    bool locked = false;
    QString name; ///< empty: nobody gave one
};
using ObjectPtr = std::shared_ptr<Object>;
using Objects = std::vector<ObjectPtr>;

/// What a file says of an object.
struct Said {
    Shape shape;
    QString name;
    bool locked = false;

    bool operator==(const Said& other) const
    {
        return shape == other.shape && name == other.name && locked == other.locked;
    }
};
inline std::vector<Said> SaidOf(const Objects& objects)
{
    std::vector<Said> said;
    for (const ObjectPtr& o : objects)
        said.push_back(Said{o->shape, o->name, o->locked});
    return said;
}
/// By the page in the file; pages without an object are left out.
using Document = std::map<int, std::vector<Said>>;

/// An image of the list, for life.
struct PageId {
    int id = 0;
    QString file;
    int inFile = 0; ///< index
};

struct Editor;

struct Step {
    virtual ~Step() = default;
    virtual void Do(Editor& editor) = 0;
    virtual void Undo(Editor& editor) = 0;
    int madeOn = 0; ///< PageId::id
};
using StepPtr = std::shared_ptr<Step>;

struct Editor {
    std::vector<ObjectPtr> objects; // newest first
    std::vector<unsigned int> pages;
    int page = 0;
    double tolerance = 0;
    std::vector<StepPtr> undo, redo;
    bool perImage = false;              ///< each page has objects of its own, and each step its page
    std::vector<PageId> ids;            ///< beside pages
    std::map<int, Objects> kept;        ///< of the pages that are not shown, by PageId::id
    std::map<QString, Document> closed; ///< by file, of its pages that are not there any more

    void Show(int index)
    {
        if (perImage && index != page) {
            kept[ids[std::size_t(page)].id] = objects;
            objects = kept[ids[std::size_t(index)].id];
        }
        page = index;
    }
    /// @return whether the page is there
    bool ShowId(int id)
    {
        const auto it = std::find_if(ids.begin(), ids.end(), [id](const PageId& p) { return p.id == id; });
        if (it != ids.end())
            Show(int(it - ids.begin()));
        return it != ids.end();
    }
    /// The objects of a page of the list.
    Objects& ObjectsOf(int index) { return index == page ? objects : kept[ids[std::size_t(index)].id]; }
    Document DocumentOf(const QString& file)
    {
        Document document = closed[file];
        for (std::size_t i = 0; i < ids.size(); ++i)
            if (ids[i].file == file)
                document[ids[i].inFile] = SaidOf(ObjectsOf(int(i)));
        for (auto it = document.begin(); it != document.end();)
            it = it->second.empty() ? document.erase(it) : std::next(it);
        return document;
    }
    void SetOrder(const Objects& order)
    {
        const auto place = [&order](const ObjectPtr& o) {
            const auto it = std::find(order.begin(), order.end(), o);
            return it != order.end() ? int(it - order.begin()) : -1;
        };
        std::stable_sort(objects.begin(), objects.end(),
                         [&](const ObjectPtr& a, const ObjectPtr& b) { return place(a) < place(b); });
    }

    bool Has(const ObjectPtr& p) const { return std::count(objects.begin(), objects.end(), p) > 0; }
    void UnselectAll()
    {
        for (const ObjectPtr& p : objects)
            p->selected = false;
    }
    void AddAlone(const ObjectPtr& p)
    {
        UnselectAll();
        if (Has(p))
            return;
        objects.insert(objects.begin(), p);
        p->selected = true;
    }
    void Remove(const ObjectPtr& p)
    {
        objects.erase(std::remove(objects.begin(), objects.end(), p), objects.end());
    }
    bool TurnTo(unsigned int image)
    {
        if (pages[std::size_t(page)] == image)
            return true;
        const auto it = std::find(pages.begin(), pages.end(), image);
        if (it == pages.end())
            return false;
        Show(int(it - pages.begin()));
        return true;
    }
    void Make(const StepPtr& step)
    {
        undo.push_back(step);
        step->madeOn = perImage ? ids[std::size_t(page)].id : 0;
        step->Do(*this);
    }
    static void Shift(std::vector<StepPtr>& from, std::vector<StepPtr>& to)
    {
        to.push_back(from.back());
        from.pop_back();
    }
    void UndoLast()
    {
        if (undo.empty())
            return;
        Shift(undo, redo);
        if (!perImage || ShowId(redo.back()->madeOn))
            redo.back()->Undo(*this);
    }
    void RedoLast()
    {
        if (redo.empty())
            return;
        Shift(redo, undo);
        if (!perImage || ShowId(undo.back()->madeOn))
            undo.back()->Do(*this);
    }

    /// The resize flag: whether the mouse is on a handle of any object.
    bool OnHandle(const QPointF& p) const
    {
        return std::any_of(objects.begin(), objects.end(), [&](const ObjectPtr& o) {
            return !o->locked && o->shape.FindHandle(p, tolerance) >= 0;
        });
    }
    /// @return whether a selected object was hit
    bool Press(const QPointF& p, bool add)
    {
        const auto hit = [&](const ObjectPtr& o) { return o->shape.Hit(p); };
        const auto hitSelected = [&](const ObjectPtr& o) { return o->selected && hit(o); };
        const auto anyHitSelected = [&] { return std::any_of(objects.begin(), objects.end(), hitSelected); };
        if (add) {
            for (const ObjectPtr& o : objects)
                o->selected = o->selected || hit(o);
        } else if (!anyHitSelected()) {
            UnselectAll();
            const auto it = std::find_if(objects.begin(), objects.end(), hit);
            if (it != objects.end())
                (*it)->selected = true;
        }
        return anyHitSelected();
    }
    void Band(const QPointF& a, const QPointF& b)
    {
        const QRectF band = QRectF(a, b).normalized();
        for (const ObjectPtr& o : objects) {
            const QRectF box = o->shape.Box();
            for (const QPointF& c : {box.topLeft(), box.topRight(), box.bottomRight(), box.bottomLeft()})
                if (c.x() >= band.left() && c.x() <= band.right() && c.y() >= band.top() &&
                    c.y() <= band.bottom())
                    o->selected = true;
        }
    }
    /// How near any decision about the point is to going the other way, in image pixels: the edges of boxes,
    /// and the reach of handles.
    double Margin(const QPointF& p) const
    {
        double margin = std::numeric_limits<double>::max();
        for (const ObjectPtr& o : objects) {
            const QRectF box = o->shape.Box();
            for (double d :
                 {p.x() - box.left(), p.x() - box.right(), p.y() - box.top(), p.y() - box.bottom()})
                margin = std::min(margin, std::abs(d));
            for (const QPointF& h : o->shape.Handles())
                margin = std::min(margin, std::abs(std::hypot(h.x() - p.x(), h.y() - p.y()) - tolerance));
        }
        return margin;
    }
};

} // namespace Reference
