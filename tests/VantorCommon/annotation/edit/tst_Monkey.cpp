// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// Random input on four viewers. VANTOR_MONKEY_EVENTS and VANTOR_MONKEY_SEED choose length and seed.
#include <VantorCommon/annotation/model/CImageView2DGeometryModel.h>
#include <VantorCommon/annotation/store/AnnotationRecovery.h>
#include <VantorCommon/annotation/store/CAnnotationStore.h>
#include <VantorCommon/annotation/store/SImageChange.h>
#include <VantorCommon/log/CLogModel.h>
#include <VantorCommon/view2d/CImageView2DCtrl.h>
#include <VantorCommon/view2d/CPageMemory.h>
#include <tests/support/CenterFixture.h>
#include <tests/support/TestMain.h>

#include <QDialog>
#include <QElapsedTimer>
#include <QLoggingCategory>
#include <QMenu>
#include <QTimer>
#include <random>
#include <set>

namespace
{
int FromEnvironment(const char* szName, int nDefault)
{
    bool bOk = false;
    const int nValue = qEnvironmentVariableIntValue(szName, &bOk);
    return bOk ? nValue : nDefault;
}

constexpr int kSeed = 20261121;
constexpr qint64 kPageMemory = 1 << 20; // a few pages

class Monkey
{
public:
    /// @param bStore  with all options and all that keeps annotations
    Monkey(unsigned int nSeed, bool bStore) : m_random(nSeed), m_bStore(bStore)
    {
        SCenterOptions sOptions;
        sOptions.bAnnotationsPerImage = bStore;
        sOptions.bCarryAnnotations = bStore;
        sOptions.bAnnotationJournal = bStore;
        sOptions.bEditKeys = bStore;
        sOptions.bOwnColors = bStore;
        sOptions.bDeferredPages = bStore;
        if (bStore)
            CPageMemory::Get().SetLimit(kPageMemory);
        m_f.center->SetOptions(sOptions);
        auto* pLog = CLogModel::GetInstance();
        QObject::disconnect(pLog, &CLogModel::signal_NewMessage, pLog, &CLogModel::slot_NewMessage);
        for (int i = 0; i < 4; ++i) {
            m_f.Ctrl(i)->AddImage(m_f.folder.filePath(QStringLiteral("%1.png").arg((i + 1) % 4)));
            m_f.Ctrl(i)->AddImage(m_f.folder.filePath(QStringLiteral("%1.png").arg((i + 2) % 4)));
        }
        // Whatever opens a dialog of its own loop gets it closed again.
        QObject::connect(&m_closer, &QTimer::timeout, &m_closer, [] {
            if (auto* pDialog = qobject_cast<QDialog*>(QApplication::activeModalWidget()))
                pDialog->reject();
        });
        m_closer.start(5);
        const auto* pCentre = m_f.centerView.get();
        QObject::connect(pCentre, &CCenterView::signal_AddDrawableObjectWithViewID, &m_closer,
                         [this] { ++m_nAdded; });
        QObject::connect(pCentre, &CCenterView::signal_ChangeDrawableObjectPropertyWithViewID, &m_closer,
                         [this] { ++m_nChanged; });
    }

    void Event()
    {
        // Left to chance alone, menus and 3D views would soon be all there is.
        if (Pick(10) == 0)
            CloseMenus();
        if (Pick(40) == 0)
            m_f.Viewer(Pick(4))->slot_Press2D();
        if (Pick(12) == 0)
            Drag();
        if (m_bStore && Pick(8) == 0)
            UseStore();
        const int n = Pick(100);
        if (n < 40)
            Move();
        else if (n < 66)
            PressOrRelease();
        else if (n < 73)
            Key();
        else if (n < 78)
            Wheel();
        else if (n < 92)
            PressButton();
        else if (n < 96)
            TouchMenu();
        else
            ActAsHost();
    }

    /// Empty, or what is wrong.
    QString Check() const
    {
        for (int i = 0; i < 4; ++i) {
            const auto* pModel = m_f.View(i)->GetGeometryModel();
            std::set<unsigned int> identifiers;
            for (const auto& pObject : pModel->GetObjects()) {
                if (!pObject || !identifiers.insert(pObject->GetUID()).second)
                    return QString::asprintf("viewer %d: an object stands twice or is none", i);
                if (pObject->GetName().isEmpty())
                    return QString::asprintf("viewer %d: an object without a name", i);
            }
            if (m_f.View(i)->GetDrawableObjects() != pModel->GetObjects())
                return QString::asprintf("viewer %d paints other objects than it has", i);
            if (m_f.View(i)->GetImageUID() != m_f.Ctrl(i)->GetImageID())
                return QString::asprintf("viewer %d shows another image than the current one", i);
            if (m_bStore && !AllIsInTheDocument(i))
                return QString::asprintf("viewer %d: the document says something else", i);
        }
        return {};
    }
    /// Empty, or what is wrong with the files of unsaved work.
    QString CheckJournals() const
    {
        const QDir folder(AnnotationRecovery::GetFolder());
        for (const QString& strName : folder.entryList({QStringLiteral("*.jsonl")}, QDir::Files)) {
            std::vector<AnnotationRecovery::SImage> vctImages;
            const auto report = AnnotationRecovery::Read(folder.filePath(strName), vctImages);
            if (!report.failure.empty() || !report.remarks.empty())
                return QStringLiteral("a journal cannot be read");
        }
        return {};
    }

    /// Lets go of everything and clears up, then draws in every viewer as a person would.
    QString FinishByDrawing()
    {
        CloseMenus();
        LetGo();
        m_f.center->ChangeLayout(2, 2);
        m_f.window.activateWindow();
        for (int i = 0; i < 4; ++i) {
            m_f.LoadInto(i, 3);
            m_f.PressFrameButton(i, "2D view");
            m_f.PressFrameButton(i, "Fit to view");
            m_f.DrawRectangle(i, {20, 20}, {60, 60});
            if (m_f.Counts()[i] != 1)
                return QString::asprintf("viewer %d does not draw any more", i);
            m_f.Key(Qt::Key_Delete);
            if (m_f.Counts()[i] != 0)
                return QString::asprintf("viewer %d does not delete any more", i);
        }
        return Check();
    }

    /// What came of it: a monkey that does nothing proves nothing.
    int Stored() const { return m_nStored; }
    int Added() const { return m_nAdded; }
    int Changed() const { return m_nChanged; }

    void Breathe()
    {
        QCoreApplication::processEvents();
        while (!CLogModel::GetInstance()->IsEmpty())
            CLogModel::GetInstance()->slot_OnTimer();
        KeepSmall();
    }

private:
    CImageView2DCtrl* Ctrl2D(int nView) const { return m_f.Ctrl(nView)->Get2DCtrl(); }
    /// The objects that are shown are those of one page of the document, in their order.
    bool AllIsInTheDocument(int nView) const
    {
        if (m_f.Ctrl(nView)->GetImage() == nullptr) // what is drawn without an image belongs to no file
            return true;
        const auto vctObjects = m_f.View(nView)->GetGeometryModel()->GetObjects();
        const auto document = Ctrl2D(nView)->GetAnnotationStore()->TakeDocument();
        const auto isShown = [&](const Vantor::Annotations::SPage& page) {
            return std::equal(page.objects.begin(), page.objects.end(), vctObjects.begin(), vctObjects.end(),
                              [](const auto& object, const auto& pObject) {
                                  return object.id == pObject->GetId().toStdString();
                              });
        };
        return vctObjects.empty() || std::any_of(document.pages.begin(), document.pages.end(), isShown);
    }
    /// A step of the store, or a file.
    void UseStore()
    {
        const int nView = Pick(4);
        auto& store = *Ctrl2D(nView)->GetAnnotationStore();
        const auto vctObjects = m_f.View(nView)->GetGeometryModel()->GetObjects();
        const QString strFile = m_f.folder.filePath(QStringLiteral("%1.vantor.json").arg(Pick(4)));
        CAnnotationStore::ObjectList vctSome;
        for (int i = Pick(3); i >= 0 && !vctObjects.empty(); --i)
            vctSome.push_back(vctObjects[std::size_t(Pick(int(vctObjects.size())))]);
        ++m_nStored;
        switch (Pick(13)) {
        case 0:
            return vctSome.empty() ? void() : store.Rename(vctSome[0], QString::number(Pick(5)));
        case 1:
            return store.SetLocked(vctSome, Pick(3) == 0);
        case 2:
            return store.SetVisible(vctSome, Pick(3) != 0);
        case 3:
            return store.MoveTo(vctSome, Pick(9));
        case 4:
            return Pick(2) == 0 ? store.Raise(vctSome) : store.Lower(vctSome);
        case 5:
            store.Duplicate(vctSome, QPointF(Pick(9), Pick(9)));
            return;
        case 6:
            m_document = store.TakeDocument();
            return;
        case 7:
            return store.Apply(m_document);
        case 8:
            return store.SetSaved();
        case 9:
            return store.Save(strFile);
        case 10:
            return store.Load(strFile);
        case 11:
            return store.SelectAll();
        default:
            Flip(*Ctrl2D(nView));
        }
    }
    void Flip(CImageView2DCtrl& ctrl)
    {
        const auto pImage = std::make_shared<Vantor::Algorithms::CImage>();
        if (ctrl.GetCurrentImgage() && pImage->CopyFrom(ctrl.GetCurrentImgage().get()) == 0 &&
            pImage->FlipHorizontally() == 0)
            ctrl.ChangeCurrentImage(pImage, {SImageChange::EKind_FlippedX});
    }
    int Pick(int nCount) { return std::uniform_int_distribution<int>(0, nCount - 1)(m_random); }

    /// Mostly inside one of the views; short steps, so that drags happen.
    void Move()
    {
        if (Pick(8) == 0) {
            const auto* pView = m_f.View(Pick(4));
            m_pos = pView->mapTo(
                &m_f.window, QPoint(Pick(std::max(1, pView->width())), Pick(std::max(1, pView->height()))));
        } else {
            m_pos += QPoint(Pick(61) - 30, Pick(61) - 30);
        }
        m_pos = QPoint(std::clamp(m_pos.x(), 0, m_f.window.width() - 1),
                       std::clamp(m_pos.y(), 0, m_f.window.height() - 1));
        QTest::mouseMove(m_f.Window(), m_pos);
    }
    void PressOrRelease()
    {
        const int n = Pick(20);
        const Qt::MouseButton button = n < 18 ? Qt::LeftButton : n < 19 ? Qt::RightButton : Qt::MiddleButton;
        const auto modifiers = Pick(6) == 0 ? Qt::ControlModifier : Qt::NoModifier;
        if (m_held.testFlag(button)) {
            m_held &= ~Qt::MouseButtons(button);
            QTest::mouseRelease(m_f.Window(), button, modifiers, m_pos);
        } else if (IsInView()) {
            m_held |= button;
            QTest::mousePress(m_f.Window(), button, modifiers, m_pos);
        }
    }
    /// A whole drag over a view, mostly undisturbed, so that there is something to disturb.
    void Drag()
    {
        CloseMenus();
        LetGo();
        static const char* const tools[] = {"Rect", "Circle", "Ellipse", "Select", "Select", "Select"};
        m_f.PressToolButton(tools[Pick(int(std::size(tools)))]);
        const auto* pView = m_f.View(ShownViewer());
        m_pos = pView->mapTo(&m_f.window, pView->rect().center()) + QPoint(Pick(201) - 100, Pick(201) - 100);
        QTest::mouseMove(m_f.Window(), m_pos);
        m_held = Qt::LeftButton;
        QTest::mousePress(m_f.Window(), Qt::LeftButton, Qt::NoModifier, m_pos);
        for (int i = Pick(4); i >= 0; --i)
            Pick(12) == 0 ? Key() : Move();
        LetGo();
    }
    void LetGo()
    {
        for (Qt::MouseButton button : {Qt::LeftButton, Qt::RightButton, Qt::MiddleButton})
            if (m_held.testFlag(button))
                QTest::mouseRelease(m_f.Window(), button, Qt::NoModifier, m_pos);
        m_held = Qt::NoButton;
    }
    bool IsInView() const { return qobject_cast<CImageView2D*>(m_f.window.childAt(m_pos)) != nullptr; }
    void Key()
    {
        static const std::pair<Qt::Key, Qt::KeyboardModifiers> keys[] = {
            {Qt::Key_Delete, Qt::NoModifier}, {Qt::Key_Backspace, Qt::NoModifier},
            {Qt::Key_Escape, Qt::NoModifier}, {Qt::Key_Z, Qt::ControlModifier},
            {Qt::Key_Z, Qt::ControlModifier}, {Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier},
            {Qt::Key_C, Qt::ControlModifier}, {Qt::Key_V, Qt::ControlModifier},
            {Qt::Key_A, Qt::NoModifier},      {Qt::Key_Tab, Qt::NoModifier},
            {Qt::Key_Down, Qt::NoModifier},   {Qt::Key_Right, Qt::ShiftModifier},
            {Qt::Key_A, Qt::ControlModifier}, {Qt::Key_D, Qt::ControlModifier},
            {Qt::Key_Return, Qt::NoModifier}};
        const auto& [key, modifiers] = keys[Pick(int(std::size(keys)))];
        m_f.Key(key, modifiers);
    }
    void Wheel()
    {
        auto* pView = m_f.View(Pick(4));
        const QPoint pixel(Pick(std::max(1, pView->width())), Pick(std::max(1, pView->height())));
        QWheelEvent wheel(pixel, pView->mapToGlobal(pixel), QPoint(), QPoint(0, Pick(2) == 0 ? 120 : -120),
                          m_held, Qt::NoModifier, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(pView, &wheel);
        if (pView->GetSizePixel() > 30)
            pView->slot_ZoomFit();
    }
    void PressButton()
    {
        static const char* const tools[] = {"Rect", "Circle", "Ellipse", "Polygon", "Select", "Panning"};
        static const char* const names[] = {"2D view",     "3D view",     "Select",       "Pan",
                                            "Fit to view", "Rotate left", "Rotate right", "Previous image",
                                            "Next image",  "Ruler"};
        if (!m_held && Pick(3) > 0 && !QApplication::activePopupWidget())
            m_f.PressToolButton(tools[Pick(int(std::size(tools)))]);
        else if (!m_held && !QApplication::activePopupWidget())
            m_f.PressFrameButton(ShownViewer(), names[Pick(int(std::size(names)))]);
    }
    int ShownViewer()
    {
        for (int i = Pick(4);; i = (i + 1) % 4)
            if (m_f.Viewer(i)->isVisible())
                return i;
    }
    /// Opens a context menu, chooses a harmless entry of an open one, or closes it.
    void TouchMenu()
    {
        auto* pMenu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        if (!pMenu) {
            auto* pView = m_f.View(ShownViewer());
            pView->slot_ShowContextMenu(QPoint(Pick(std::max(1, pView->width())), Pick(300)));
            return;
        }
        static const QStringList harmless{QStringLiteral("Delete"), QStringLiteral("Copy (C)"),
                                          QStringLiteral("Paste (P)"), QStringLiteral("GoTo"),
                                          QStringLiteral("Switch To 3D View")};
        QAction* pAction = pMenu->actions().at(Pick(pMenu->actions().size()));
        CloseMenus();
        if (harmless.contains(pAction->text()))
            pAction->trigger();
    }
    void CloseMenus()
    {
        while (QWidget* pPopup = QApplication::activePopupWidget())
            pPopup->close();
    }
    void ActAsHost()
    {
        const int nView = Pick(4);
        const auto vctObjects = m_f.Viewer(nView)->Get2DDrawableObjects();
        switch (Pick(6)) {
        case 0:
            m_f.center->ChangeLayout(1 + Pick(2), 2);
            break;
        case 1:
            m_f.center->ChangeLayout(2, 2);
            break;
        case 2:
            if (!vctObjects.empty())
                m_f.Ctrl(nView)->Delete2DDrawableObject(
                    vctObjects[std::size_t(Pick(int(vctObjects.size())))]->GetUID());
            break;
        case 3:
            m_f.Ctrl(nView)->AddImage(
                m_bStore && Pick(2) == 0
                    ? TestDataPath(QStringLiteral("pdf/pdfium_rectangles_multi_pages.pdf"))
                    : m_f.folder.filePath(QStringLiteral("%1.png").arg(Pick(4))));
            break;
        case 4:
            m_f.Ctrl(nView)->ChangeCurrentImage(MakeTestImage(20 + Pick(200), 20 + Pick(200), 3));
            break;
        default:
            m_f.Ctrl(nView)->CloseCurrentImage();
            if (!m_f.Ctrl(nView)->GetImage())
                m_f.LoadInto(nView, 1 + 2 * Pick(2));
        }
    }
    /// A long run must not drown in its own pages and shapes.
    void KeepSmall()
    {
        for (int i = 0; i < 4; ++i) {
            auto* pList = m_f.View(i)->GetGeometryModel();
            if (pList->Size() > 60 || m_nBreaths % 40 == 0)
                m_f.LoadInto(i, 3);
        }
        ++m_nBreaths;
    }

    std::mt19937 m_random;
    bool m_bStore;
    Vantor::Annotations::SDocument m_document; ///< to apply again
    CenterFixture m_f{2, 2};
    QTimer m_closer;
    QPoint m_pos{300, 300};
    Qt::MouseButtons m_held = Qt::NoButton;
    int m_nBreaths = 0;
    int m_nAdded = 0;
    int m_nChanged = 0;
    int m_nStored = 0;
};
} // namespace

class tst_Monkey : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir m_state;

private Q_SLOTS:
    /// The X server may complain about a window that a menu or a dialog has just taken away.
    void initTestCase()
    {
        QLoggingCategory::setFilterRules(QStringLiteral("qt.qpa.xcb.warning=false"));
        qputenv("XDG_STATE_HOME", m_state.path().toUtf8());
    }

    void nothingCrashesAndTheModelsStayConsistent_data()
    {
        QTest::addColumn<bool>("store");
        QTest::newRow("without options") << false;
        QTest::newRow("with the store") << true;
    }
    void nothingCrashesAndTheModelsStayConsistent()
    {
        QFETCH(bool, store);
        const int nEvents = FromEnvironment("VANTOR_MONKEY_EVENTS", store ? 1500 : 3000);
        const int nSeed = FromEnvironment("VANTOR_MONKEY_SEED", kSeed);
        qInfo("seed %d, %d events", nSeed, nEvents);
        QElapsedTimer timer;
        timer.start();
        Monkey monkey{unsigned(nSeed), store};
        for (int i = 0; i < nEvents; ++i) {
            monkey.Event();
            if (i % 10 == 0) {
                const QString strWrong = monkey.Check();
                QVERIFY2(strWrong.isEmpty(),
                         qPrintable(QString::asprintf("seed %d, event %d: ", nSeed, i) + strWrong));
            }
            if (i % 100 == 0) {
                monkey.Breathe();
                QCOMPARE(monkey.CheckJournals(), QString());
            }
        }
        qInfo("%d events in %.1f s; %d additions, %d changes, %d of the store", nEvents,
              double(timer.elapsed()) / 1000.0, monkey.Added(), monkey.Changed(), monkey.Stored());
        QVERIFY(monkey.Added() > nEvents / 100);
        QVERIFY(monkey.Changed() > nEvents / 50);
        const QString strWrong = monkey.FinishByDrawing();
        QVERIFY2(strWrong.isEmpty(), qPrintable(QString::asprintf("seed %d: ", nSeed) + strWrong));
    }
};

VANTOR_TEST_MAIN(tst_Monkey)
#include "tst_Monkey.moc"
