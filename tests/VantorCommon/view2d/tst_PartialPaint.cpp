// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// What changes is painted anew, and no more than that; the screen shows what a paint of the whole view shows.
#include <Vantor/geometry/CCircle.h>
#include <VantorCommon/annotation/object/CImageView2DDrawableRuler.h>
#include <VantorCommon/annotation/object/CImageView2DDrawableText.h>
#include <VantorCommon/annotation/view/CImageView2DLayer.h>
#include <VantorCommon/shell/center/SCenterOptions.h>
#include <tests/support/EditFixture.h>
#include <tests/support/TestMain.h>
#include <tests/support/ViewInput.h>
#include <tests/support/ViewReference.h>

#include <QBackingStore>
#include <QPaintEvent>
#include <cmath>
#include <random>

using namespace Vantor::Geometry;
using ObjectPtr = EditFixture::ObjectPtr;

namespace
{
/// How often any of the objects below was painted.
int g_nPaints = 0;

/// A rectangle that counts how often it is painted.
class CCounted : public CImageView2DDrawableGeometry
{
public:
    CCounted(double x, double y, double w, double h)
    {
        SetData(std::make_shared<CRectangle>(x, y, w, h));
        SetDisplayName(false);
    }
    void PaintContents(QPainter&, double) const override { ++g_nPaints; }
};

class CRandom
{
public:
    explicit CRandom(unsigned int nSeed) : m_engine(nSeed) {}
    double Real(double low, double high)
    {
        return std::uniform_real_distribution<double>(low, high)(m_engine);
    }
    int Whole(int low, int high) { return std::uniform_int_distribution<int>(low, high)(m_engine); }
    bool Chance(double dblShare) { return Real(0.0, 1.0) < dblShare; }

private:
    std::mt19937 m_engine;
};

std::shared_ptr<CGeometry> RandomShape(CRandom& random)
{
    const auto place = [&](double high) {
        const double v = random.Real(-20, high);
        return random.Chance(0.5) ? std::round(v) : v; // whole pixels are the hard ones
    };
    const double x = place(220), y = place(170);
    const double w = place(60), h = place(40);
    switch (random.Whole(0, 5)) {
    case 0:
        return std::make_shared<CEllipse>(x, y, w, h);
    case 1:
        return std::make_shared<CCircle>(CPoint<double>(x, y), std::abs(w));
    case 2: {
        auto pPolygon = std::make_shared<CPolygon>();
        CPointList points;
        for (const auto& p : {CPoint<double>(x, y), CPoint<double>(x + w, y), CPoint<double>(x + h, y + w)})
            points.Add(p);
        pPolygon->SetPoints(points);
        return pPolygon;
    }
    case 3:
        return std::make_shared<CLine>(CPoint<double>(x, y), CPoint<double>(x + w, y + h));
    default:
        return std::make_shared<CRectangle>(x, y, w, h);
    }
}

QString RandomName(CRandom& random)
{
    const QStringList lstNames{QStringLiteral("a"),           QStringLiteral("WWWW"),
                               QStringLiteral("fjord Äpfel"), QStringLiteral("한국어 이름"),
                               QStringLiteral("a\tb"),        QStringLiteral("Tiếng Việt")};
    return lstNames[random.Whole(0, lstNames.size() - 1)];
}

QPen RandomPen(CRandom& random)
{
    QPen pen(QColor(random.Whole(0, 255), random.Whole(0, 255), 50), random.Real(0, 12));
    if (random.Chance(0.5))
        pen.setJoinStyle(Qt::MiterJoin);
    if (random.Chance(0.3))
        pen.setStyle(Qt::DotLine);
    return pen;
}

ObjectPtr RandomObject(CRandom& random)
{
    if (random.Chance(0.15)) {
        const auto pText = std::make_shared<CImageView2DDrawableText>();
        pText->SetText(RandomName(random));
        pText->SetPosition(QPointF(random.Real(-10, 190), random.Real(-10, 140)));
        pText->SetLineHeight(12); // QPainter smooths letters of many sizes otherwise each time
        return pText;
    }
    std::shared_ptr<CImageView2DDrawableGeometry> pShape =
        random.Chance(0.15) ? std::make_shared<CImageView2DDrawableRuler>()
                            : std::make_shared<CImageView2DDrawableGeometry>();
    pShape->SetData(RandomShape(random));
    pShape->SetDisplayName(random.Chance(0.4));
    return pShape;
}

/// A view on the screen and its random edits. It is in the corner of its window: away from it, QPainter
/// rounds what begins left of the view or above it otherwise, and the layer's objects are painted there
/// directly.
class CEdited : public EditFixture
{
public:
    CEdited(unsigned int nSeed, int nObjects, bool bOwnColors) : m_random(nSeed)
    {
        SCenterOptions sOptions;
        sOptions.bOwnColors = bOwnColors;
        ctrl->SetOptions(sOptions);
        for (int i = 0; i < nObjects; ++i) {
            geometry.AddObject(RandomObject(m_random));
            geometry.GetAt(0)->SetSelected(m_random.Chance(0.1));
        }
    }

    /// What the window shows of the view, when all events are done.
    QImage Screen() const
    {
        for (int i = 0; i < 3; ++i)
            QApplication::processEvents();
        const auto* pImage = static_cast<const QImage*>(host.backingStore()->paintDevice());
        return pImage->copy(QRect(view->mapTo(&host, QPoint()), view->size()))
            .convertToFormat(QImage::Format_RGB32);
    }
    /// The same, painted anew as a whole: on a device of its own or, where the layer has something to paint,
    /// which dashes depend on the size of the device, on the same one.
    QImage Whole() const
    {
        if (geometry.GetObjectDrawing().empty() && !geometry.GetObjectDrawingWaiting())
            return ViewReference::Grab(*view);
        view->update();
        return Screen();
    }

    /// @return what was done
    QString Edit()
    {
        const auto objects = geometry.GetObjects();
        const ObjectPtr pObject =
            objects.empty() ? nullptr
                            : objects[std::size_t(m_random.Whole(0, static_cast<int>(objects.size()) - 1))];
        const int nKind = m_random.Whole(0, 17);
        if (pObject && nKind < 11)
            return QStringLiteral("object %1").arg(EditObject(pObject, nKind));
        return QStringLiteral("view %1").arg(EditView(nKind));
    }

private:
    /// A place on the screen.
    QPointF Point() { return view->MapToImage(QPointF(m_random.Whole(0, 399), m_random.Whole(0, 299))); }

    int EditObject(const ObjectPtr& pObject, int nKind)
    {
        const auto pShape = std::dynamic_pointer_cast<CImageView2DDrawableGeometry>(pObject);
        if (nKind == 0)
            pObject->MoveTopLeftTo(Point());
        else if (nKind == 1)
            pObject->MoveTopLeftTo(pObject->GetBoundary().topLeft() + QPointF(m_random.Real(-2, 2), 1));
        else if (nKind == 2)
            pObject->SetSelected(!pObject->GetSelected());
        else if (nKind == 3)
            pObject->SetName(RandomName(m_random));
        else if (nKind == 4)
            pObject->SetDisplayName(!pObject->GetDisplayName());
        else if (nKind == 5)
            pObject->SetVisible(!pObject->IsVisible());
        else if (nKind == 6)
            pObject->SetPen(RandomPen(m_random));
        else if (nKind == 7)
            pObject->SetBrushFilled(QBrush(QColor(0, 0, 255, 90)));
        else if (nKind == 8)
            geometry.DeleteObject(pObject);
        else if (nKind == 9 && pShape)
            pShape->ChangeData(RandomShape(m_random));
        else
            Reorder(pObject);
        return nKind;
    }

    void Reorder(const ObjectPtr& pObject)
    {
        auto objects = geometry.GetObjects();
        objects.erase(std::find(objects.begin(), objects.end(), pObject));
        objects.insert(objects.begin() + m_random.Whole(0, static_cast<int>(objects.size())), pObject);
        geometry.SetOrder(objects);
    }

    int EditView(int nKind)
    {
        if (nKind == 11)
            geometry.AddObject(RandomObject(m_random));
        else if (nKind == 12)
            Press(Point());
        else if (nKind == 13)
            Move(Point());
        else if (nKind == 14)
            Release(Point());
        else if (nKind == 15)
            geometry.UnSelectedAll();
        else if (nKind == 16 && m_random.Chance(0.3))
            tool.SetViewMode(EImageView2DMode(m_random.Whole(0, 6)));
        else if (m_random.Chance(0.2))
            ViewInput::Wheel(*view, QPointF(m_random.Whole(0, 390), m_random.Whole(0, 290)),
                             120 * m_random.Whole(-6, 6));
        else
            Move(Point());
        return nKind;
    }

    CRandom m_random;
};

/// An image that shows where two pictures differ.
QRect Difference(const QImage& a, const QImage& b)
{
    QRect different;
    for (int y = 0; y < a.height(); ++y)
        for (int x = 0; x < a.width(); ++x)
            if (a.pixel(x, y) != b.pixel(x, y))
                different |= QRect(x, y, 1, 1);
    return different;
}

QString Text(const QRect& rect)
{
    return QStringLiteral("(%1, %2) %3 x %4")
        .arg(rect.x())
        .arg(rect.y())
        .arg(rect.width())
        .arg(rect.height());
}
} // namespace

class tst_PartialPaint : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void afterRandomEditsTheScreenShowsAPaintOfTheWhole_data()
    {
        QTest::addColumn<int>("objects");
        QTest::addColumn<bool>("ownColors");
        for (const int nObjects : {5, 90, 250})
            for (const bool bOwn : {false, true})
                QTest::addRow("%d objects%s", nObjects, bOwn ? ", own colours" : "") << nObjects << bOwn;
    }

    void afterRandomEditsTheScreenShowsAPaintOfTheWhole()
    {
        QFETCH(int, objects);
        QFETCH(bool, ownColors);
        const int nRounds = qEnvironmentVariableIntValue("VANTOR_PAINT_ROUNDS");
        for (int nRound = 0; nRound < std::max(2, nRounds); ++nRound) {
            CEdited f(unsigned(objects + nRound), objects, ownColors);
            QStringList lstDone;
            for (int i = 0; i < 60; ++i) {
                lstDone << f.Edit();
                if (f.geometry.Size() > 4 && i % 3 == 0) // several edits in one paint
                    continue;
                ViewReference::Grab(*f.view); // makes the pictures of letters that are new
                const QImage screen = f.Screen();
                const QImage whole = f.Whole();
                QVERIFY2(screen == whole, qPrintable(QStringLiteral("round %1, after %2, at %3")
                                                         .arg(nRound)
                                                         .arg(lstDone.join(QStringLiteral(", ")),
                                                              Text(Difference(screen, whole)))));
            }
        }
    }

    void anObjectPaintsOnlyWhereItWasAnnounced()
    {
        class CWatched : public CImageView2DDrawableWidget
        {
        public:
            using CImageView2DDrawableWidget::CImageView2DDrawableWidget;
            void Paint(QPainter& painter) override { painter.fillRect(rect(), Qt::white); }
            void paintEvent(QPaintEvent* pEvent) override
            {
                region += pEvent->region();
                CImageView2DDrawableWidget::paintEvent(pEvent);
            }
            QRegion region;
        };
        CWatched widget(nullptr, nullptr);
        widget.resize(400, 300);
        widget.show();
        QVERIFY(QTest::qWaitForWindowExposed(&widget));
        CRandom random(11);
        int nSmall = 0;
        for (int i = 0; i < 400; ++i) {
            const int nWidth = random.Whole(100, 400);
            widget.SetWindow(QRect(0, 0, 200, 150));
            widget.SetViewPort(
                QRect(random.Whole(-50, 50), random.Whole(-50, 50), nWidth, nWidth * random.Whole(2, 6) / 4));
            widget.SetOwnColors(random.Chance(0.5));
            widget.Clear();
            QTRY_VERIFY(widget.GetDrawableObjects().empty());
            QApplication::processEvents();
            QApplication::processEvents();
            const QImage before = ViewReference::Grab(widget);
            const ObjectPtr pObject = RandomObject(random);
            pObject->SetSelected(random.Chance(0.5));
            if (random.Chance(0.5))
                pObject->SetName(RandomName(random));
            if (random.Chance(0.5))
                pObject->SetPen(RandomPen(random));
            widget.region = QRegion();
            widget.DrawObject(pObject);
            for (int k = 0; k < 3; ++k)
                QApplication::processEvents();
            const QRegion announced = widget.region;
            const QRect changed = Difference(before, ViewReference::Grab(widget));
            QVERIFY2(announced.boundingRect().contains(changed) || changed.isEmpty(),
                     qPrintable(QStringLiteral("object %1: %2 outside of %3")
                                    .arg(i)
                                    .arg(Text(changed), Text(announced.boundingRect()))));
            nSmall += announced.boundingRect().width() * announced.boundingRect().height() < 400 * 300 / 4;
        }
        QVERIFY2(nSmall > 100, qPrintable(QString::number(nSmall)));
    }

    void aChangeOfOnePaintsOnlyWhatMeetsIt()
    {
        EditFixture f;
        std::vector<ObjectPtr> objects;
        for (int i = 0; i < 400; ++i) { // 20 x 20, far enough apart not to meet
            objects.push_back(std::make_shared<CCounted>(2 + i % 20 * 10, 2 + i / 20 * 7.5, 1, 1));
            f.geometry.AddObject(objects.back());
        }
        f.geometry.UnSelectedAll();
        const auto painted = [&](const std::function<void()>& change) {
            for (int i = 0; i < 3; ++i)
                QApplication::processEvents();
            g_nPaints = 0;
            change();
            for (int i = 0; i < 3; ++i)
                QApplication::processEvents();
            return g_nPaints;
        };
        const auto atMost = [](int nPainted, int nMost) {
            if (nPainted > nMost)
                qWarning("%d painted instead of %d", nPainted, nMost);
            return nPainted <= nMost;
        };
        const auto pOne = objects[210];
        int nPainted = painted([&] { pOne->SetSelected(true); });
        QVERIFY(nPainted >= 1 && atMost(nPainted, 9));
        nPainted = painted([&] { pOne->MoveTopLeftTo(QPointF(103, 78)); });
        QVERIFY(nPainted >= 1 && atMost(nPainted, 9));
        nPainted = painted([&] { pOne->SetVisible(false); });
        QVERIFY(atMost(nPainted, 8));
        QVERIFY(atMost(painted([&] { f.geometry.AddObject(std::make_shared<CCounted>(50, 50, 2, 2)); }), 10));
        QVERIFY(atMost(painted([&] { f.geometry.DeleteObject(objects[10]); }), 9));
        QCOMPARE(painted([&] { f.Move(QPointF(20, 20)); }), 0);
        f.view->setFocus();
        // The crosshair meets two rows and two columns at most.
        f.Move(QPointF(6, 6));
        QVERIFY(atMost(painted([&] { f.Press(QPointF(6, 6)); }), 100));
        QVERIFY(atMost(painted([&] { f.Move(QPointF(8, 8)); }), 100));
        QVERIFY(atMost(painted([&] { f.Release(QPointF(8, 8)); }), 10));
        // A segment from corner to corner that waits for a click.
        f.tool.SetViewMode(EImageView2DMode_Drawing_Polygon);
        f.Click(QPointF(0, 0));
        QCOMPARE(painted([&] { f.Move(QPointF(199, 149)); }), 0);
        QCOMPARE(painted([&] { f.Move(QPointF(198, 140)); }), 0);
        // An update of the whole view paints everything.
        QVERIFY(painted([&] { f.view->update(); }) >= 398);
    }
};

VANTOR_TEST_MAIN(tst_PartialPaint)
#include "tst_PartialPaint.moc"
