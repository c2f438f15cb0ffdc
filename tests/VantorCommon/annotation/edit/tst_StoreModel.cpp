// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// Random editing against a plain second model, with all that keeps annotations: a set for each image, sets
// that go along when their image changes, the steps of the store, documents, files and the journal; some of
// the images are the pages of a document that are rendered when they are needed, and lose their pixels in
// between. VANTOR_UNDO_STEPS and VANTOR_UNDO_SEED choose length and seed.
#include "UndoDriver.h"

#include <Vantor/pdf/CPDFReader.h>
#include <VantorCommon/annotation/object/ShapeKinds.h>
#include <VantorCommon/annotation/store/AnnotationRecovery.h>
#include <VantorCommon/annotation/store/CAnnotationStore.h>
#include <VantorCommon/annotation/store/SImageChange.h>
#include <VantorCommon/view2d/CPageMemory.h>
#include <tests/support/TestMain.h>
#include <tests/support/TestPdf.h>

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <set>

using namespace UndoDriver;
using namespace Vantor::Annotations;
using Reference::Said;
using Vantor::Algorithms::CImage;

namespace
{
/// Nothing when the object is of a kind that the second model does not know.
Said SaidOf(const SObject& object)
{
    Said said;
    const auto* pKind = ShapeKinds::OfKey(QString::fromStdString(object.kind));
    const auto pObject = pKind ? pKind->read({object.numbers, {}}) : nullptr;
    if (pObject)
        said.shape = ShapeOf(pObject);
    if (object.named)
        said.name = QString::fromStdString(object.name);
    said.locked = object.locked;
    return said;
}

Reference::Document DocumentOf(const SDocument& document)
{
    Reference::Document plain;
    for (const SPage& page : document.pages)
        for (const SObject& object : page.objects)
            plain[page.page].push_back(SaidOf(object));
    return plain;
}

/// The same objects on the same pages, in any order: undo of a deletion puts objects back at the front.
bool HasSameObjects(const Reference::Document& a, const Reference::Document& b)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](const auto& pageA, const auto& pageB) {
        return pageA.first == pageB.first && std::is_permutation(pageA.second.begin(), pageA.second.end(),
                                                                 pageB.second.begin(), pageB.second.end());
    });
}

/// A document of three pages of different sizes, each with a drawing of its own.
QByteArray ThreePages()
{
    const auto page = [](int nContents, int nWidth) {
        return "<< /Type /Page /Parent 2 0 R /MediaBox [0 0 " + QByteArray::number(nWidth) +
               " 60] /Contents " + QByteArray::number(nContents) + " 0 R >>";
    };
    const auto contents = [](const QByteArray& drawing) {
        return "<< /Length " + QByteArray::number(drawing.size()) + " >>\nstream\n" + drawing + "\nendstream";
    };
    return MakePdf({"<< /Type /Catalog /Pages 2 0 R >>",
                    "<< /Type /Pages /Kids [3 0 R 5 0 R 7 0 R] /Count 3 >>", page(4, 80),
                    contents("1 0 0 rg 5 5 20 30 re f"), page(6, 90), contents("0 1 0 rg 15 5 20 30 re f"),
                    page(8, 100), contents("0 0 1 rg 25 5 20 30 re f")});
}

class StoreDriver : public Driver
{
public:
    StoreDriver(unsigned int nSeed, const QStringList& lstFiles, QString strFolder)
        : Driver(nSeed, lstFiles), m_strFolder(std::move(strFolder))
    {
        SCenterOptions sOptions;
        sOptions.bAnnotationsPerImage = true;
        sOptions.bCarryAnnotations = true;
        sOptions.bAnnotationJournal = true;
        sOptions.bDeferredPages = true;
        m_f.ctrl->SetOptions(sOptions);
        m_editor.perImage = true;
        AddId(QString());
    }

    void Step(bool bLinear) override
    {
        if (Pick(100) < 55)
            return Driver::Step(bLinear);
        m_bRounds = false;
        const int n = Pick(100);
        if (n < 14)
            Rename();
        else if (n < 26)
            Lock();
        else if (n < 40)
            Order();
        else if (n < 50)
            m_editor.objects.size() < kManyObjects ? Duplicate() : Delete();
        else if (n < 60)
            m_editor.objects.size() < kManyObjects ? Paste() : Delete();
        else if (n < 70)
            SetShape();
        else if (n < 80)
            ChangeImage();
        else if (AnyTurned())
            Rename();
        else if (n < 84)
            Remember();
        else if (n < 90)
            Apply();
        else if (n < 94)
            Save();
        else if (n < 97)
            SaveAndLoad();
        else
            Close();
        ++m_done[m_strStep];
    }

    /// Empty, or what documents and journal say that the second model does not.
    QString CompareFiles()
    {
        if (AnyTurned())
            return {};
        ++m_done[QStringLiteral("documents compared")];
        const QString strFile = m_editor.ids[std::size_t(m_editor.page)].file;
        if (DocumentOf(Store().TakeDocument()) != m_editor.DocumentOf(strFile))
            return Told(QStringLiteral("document"));
        if (!Store().HasUnsaved())
            for (const auto& [strSaved, document] : Documents())
                if (!HasSameObjects(m_saved[strSaved], document))
                    return Told(QStringLiteral("it says that all is saved"));
        return {};
    }
    QString CompareJournal()
    {
        Breathe();
        const QDir folder(AnnotationRecovery::GetFolder());
        const QStringList lstFiles = folder.entryList({QStringLiteral("*.jsonl")}, QDir::Files);
        if (lstFiles.isEmpty())
            return Store().HasUnsaved() ? Told(QStringLiteral("no journal")) : QString();
        std::vector<AnnotationRecovery::SImage> vctFiles;
        const SReport report = AnnotationRecovery::Read(folder.filePath(lstFiles[0]), vctFiles);
        if (lstFiles.size() != 1 || !report.failure.empty() || !report.remarks.empty())
            return Told(QStringLiteral("a bad journal"));
        std::map<QString, Reference::Document> back;
        for (const auto& file : vctFiles)
            back[file.strImage] = DocumentOf(file.document);
        if (AnyTurned())
            return {};
        for (std::size_t i = 0; i < m_editor.ids.size(); ++i) {
            const QString strFile = m_editor.ids[i].file;
            const QString strKey = strFile.startsWith(QLatin1Char('#')) ? QString() : strFile;
            if (Store().HasUnsaved(int(i)) && back[strKey] != m_editor.DocumentOf(strFile))
                return Told(QStringLiteral("journal"));
        }
        ++m_done[QStringLiteral("journals compared")];
        return {};
    }
    /// Gives rendered pages back. Empty, or what a page of the document is that it should not be.
    /// @param vctExpected  its pages as they are drawn
    QString ComparePages(const QString& strDocument, const std::vector<std::shared_ptr<CImage>>& vctExpected)
    {
        CPageMemory::Get().Trim();
        for (std::size_t i = 0; i < m_editor.ids.size(); ++i) {
            const auto pImage = m_f.images.GetImage(int(i));
            const auto& id = m_editor.ids[i];
            if (id.file != strDocument || !pImage->IsDeferred())
                continue;
            if (!SamePixels(*pImage, *vctExpected[std::size_t(id.inFile) % vctExpected.size()]))
                return Told(QStringLiteral("page"));
            ++m_done[QStringLiteral("pages compared")];
        }
        return {};
    }
    /// How often each step of the store was taken.
    const std::map<QString, int>& Done() const { return m_done; }

protected:
    void Rotate() override
    {
        m_strStep = QStringLiteral("rotate");
        const bool bLeft = Pick(2) == 0;
        ChangeBy({bLeft ? SImageChange::EKind_TurnedLeft : SImageChange::EKind_TurnedRight},
                 [&] { bLeft ? m_f.ctrl->RotateLeft() : m_f.ctrl->RotateRight(); });
    }
    void Load() override
    {
        m_strStep = QStringLiteral("load");
        const QString strFile = m_files[Pick(m_files.size())];
        if (m_editor.pages.size() < 4 && Pick(4) != 0) {
            const int nFirst = int(m_editor.ids.size());
            m_f.ctrl->AddImage(strFile);
            AddIds(strFile);
            m_editor.Show(nFirst);
        } else {
            m_f.ctrl->LoadFile(strFile);
            m_editor.objects.clear();
            m_editor.ids.clear();
            m_editor.kept.clear();
            m_editor.closed.clear();
            m_editor.page = 0;
            m_counts.clear();
            m_saved.clear();
            m_remembered.clear();
            AddIds(strFile);
        }
        m_editor.pages = Pages();
        TakeZoomOver();
    }

private:
    CAnnotationStore& Store() { return *m_f.ctrl->GetAnnotationStore(); }
    std::size_t AnyIndex() { return std::size_t(Pick(int(m_editor.objects.size()))); }
    EditFixture::ObjectPtr Real(const Reference::ObjectPtr& pObject)
    {
        return m_f.geometry.FindObject(pObject->uid);
    }
    /// Whether an image of the list has been turned, flipped or cut. Files and journals have places on the
    /// picture in the file then, which the second model does not know.
    bool AnyTurned()
    {
        for (int i = 0; i < m_f.images.GetImageCount(); ++i)
            if (m_turned.count(m_f.images.GetImage(i)->GetUID()) != 0)
                return true;
        return false;
    }
    void AddId(const QString& strFile)
    {
        const QString strKey = strFile.isEmpty() ? QStringLiteral("#%1").arg(m_nNextId) : strFile;
        m_editor.ids.push_back({m_nNextId++, strKey, m_counts[strKey]++});
    }
    /// Of the images that have just come from a file.
    void AddIds(const QString& strFile)
    {
        while (int(m_editor.ids.size()) < m_f.images.GetImageCount())
            AddId(strFile);
    }
    /// One or several of the objects.
    Reference::Objects Some()
    {
        Reference::Objects some;
        for (int i = Pick(3); i >= 0 && !m_editor.objects.empty(); --i) {
            const auto& pObject = m_editor.objects[AnyIndex()];
            if (std::count(some.begin(), some.end(), pObject) == 0)
                some.push_back(pObject);
        }
        return some;
    }
    CAnnotationStore::ObjectList RealOf(const Reference::Objects& objects)
    {
        CAnnotationStore::ObjectList real;
        for (const auto& pObject : objects)
            real.push_back(Real(pObject));
        return real;
    }
    static Said Now(const Reference::ObjectPtr& pObject) { return Reference::SaidOf({pObject}).front(); }
    std::map<QString, Reference::Document> Documents()
    {
        std::map<QString, Reference::Document> documents;
        for (const auto& id : m_editor.ids)
            documents[id.file] = m_editor.DocumentOf(id.file);
        return documents;
    }

    void Rename()
    {
        m_strStep = QStringLiteral("rename");
        if (m_editor.objects.empty())
            return;
        const auto& pObject = m_editor.objects[AnyIndex()];
        const QString strName = Pick(4) == 0 ? QString() : QStringLiteral("name \"%1\"").arg(Pick(9));
        Store().Rename(Real(pObject), strName);
        if (strName == pObject->name)
            return;
        const auto pStep = std::make_shared<Reference::ValueStep>(Reference::ValueStep::What::Name);
        pStep->changes.push_back({pObject, Now(pObject), Now(pObject)});
        pStep->changes[0].after.name = strName;
        m_editor.Make(pStep);
    }
    void Lock()
    {
        m_strStep = QStringLiteral("lock");
        const bool bLock = Pick(3) == 0;
        const auto some = Some();
        Store().SetLocked(RealOf(some), bLock);
        const auto pStep = std::make_shared<Reference::ValueStep>(Reference::ValueStep::What::Lock);
        for (const auto& pObject : some) {
            if (pObject->locked == bLock)
                continue;
            pStep->changes.push_back({pObject, Now(pObject), Now(pObject)});
            pStep->changes.back().after.locked = bLock;
        }
        if (!pStep->changes.empty())
            m_editor.Make(pStep);
    }
    void SetShape()
    {
        m_strStep = QStringLiteral("set shape");
        if (m_editor.objects.empty())
            return;
        const auto pObject = m_editor.objects[AnyIndex()];
        if (!pObject->shape.IsBox())
            return;
        const double x = Pick(2000) / 7.0, y = Pick(900) / 9.0, w = Pick(900) / 11.0 - 40,
                     h = Pick(90) - 30.5;
        QVERIFY(Store().SetShape(Real(pObject), {{x, y, w, h}, {}}));
        const auto pStep = std::make_shared<Reference::ValueStep>(Reference::ValueStep::What::Shape);
        pStep->changes.push_back({pObject, Now(pObject), Now(pObject)});
        pStep->changes[0].after.shape.points = {QPointF(x, y), QPointF(x + w, y + h)};
        if (!(pStep->changes[0].after.shape == pObject->shape))
            m_editor.Make(pStep);
    }

    void Order()
    {
        m_strStep = QStringLiteral("order");
        const auto some = Some();
        const auto chosen = [&some](const Reference::ObjectPtr& p) {
            return std::count(some.begin(), some.end(), p) > 0;
        };
        Reference::Objects order = m_editor.objects;
        const int nHow = Pick(3);
        if (nHow == 0) {
            const int nIndex = Pick(int(order.size()) + 2);
            Store().MoveTo(RealOf(some), nIndex);
            const auto itRest = std::stable_partition(order.begin(), order.end(), chosen);
            Reference::Objects moved(order.begin(), itRest), rest(itRest, order.end());
            rest.insert(rest.begin() + std::min(nIndex, int(rest.size())), moved.begin(), moved.end());
            order = rest;
        } else if (nHow == 1) {
            Store().Raise(RealOf(some));
            for (std::size_t i = 1; i < order.size(); ++i)
                if (chosen(order[i]) && !chosen(order[i - 1]))
                    std::swap(order[i], order[i - 1]);
        } else {
            Store().Lower(RealOf(some));
            for (std::size_t i = order.size(); i-- > 1;)
                if (chosen(order[i - 1]) && !chosen(order[i]))
                    std::swap(order[i], order[i - 1]);
        }
        if (order != m_editor.objects)
            m_editor.Make(std::make_shared<Reference::OrderStep>(order));
    }

    void Duplicate()
    {
        m_strStep = QStringLiteral("duplicate");
        m_bRounds = true;
        Reference::Objects some = Some(), copies;
        if (some.empty())
            return;
        std::sort(some.begin(), some.end(), [this](const auto& a, const auto& b) {
            const auto& all = m_editor.objects;
            return std::find(all.begin(), all.end(), a) < std::find(all.begin(), all.end(), b);
        });
        const QPointF offset = Pick(3) == 0 ? QPointF() : QPointF(Pick(40) / 3.0, Pick(40) / 3.0);
        const auto real = Store().Duplicate(RealOf(some), offset);
        for (const auto& pObject : some) {
            copies.push_back(std::make_shared<Reference::Object>(*pObject));
            if (!offset.isNull())
                copies.back()->shape.MoveTopLeftTo(pObject->shape.Box().topLeft() + offset);
        }
        Add(copies, real);
    }
    void Paste()
    {
        m_strStep = QStringLiteral("paste");
        Reference::Objects copies;
        std::vector<SObject> vctObjects;
        for (int i = Pick(3); i >= 0; --i) {
            SObject object;
            const double x = Pick(1000) / 7.0, y = Pick(900) / 9.0, w = Pick(90) + 0.5, h = Pick(90) - 30.5;
            object.kind = i == 0 ? "rectangle" : i == 1 ? "polygon" : "ruler";
            object.numbers = {x, y, w, h};
            if (i == 1)
                object.numbers.insert(object.numbers.end(), {x + 1, h});
            object.named = Pick(2) == 0;
            object.name = object.named ? "pasted" : "";
            object.locked = Pick(5) == 0;
            vctObjects.push_back(object);
            copies.push_back(std::make_shared<Reference::Object>());
            auto& shape = copies.back()->shape;
            shape.kind = i == 0 ? Kind::Rectangle : i == 1 ? Kind::Polygon : Kind::Line;
            shape.points = {QPointF(x, y), i == 0 ? QPointF(x + w, y + h) : QPointF(w, h)};
            if (i == 1)
                shape.points.emplace_back(x + 1, h);
            copies.back()->name = QString::fromStdString(object.name);
            copies.back()->locked = object.locked;
        }
        Add(copies, Store().Paste(vctObjects, {}));
    }
    void Add(const Reference::Objects& copies, const CAnnotationStore::ObjectList& real)
    {
        QCOMPARE(real.size(), copies.size());
        for (std::size_t i = 0; i < copies.size(); ++i)
            copies[i]->uid = real[i]->GetUID();
        m_editor.Make(std::make_shared<Reference::PasteStep>(copies));
    }

    void ChangeBy(const SImageChange& sChange, const std::function<void()>& change)
    {
        const unsigned int nOld = m_f.view->GetImageUID();
        const auto pOld = m_f.images.GetCurrentImage();
        const int w = pOld->GetWidth(), h = pOld->GetHeight();
        change();
        const auto pNew = m_f.images.GetCurrentImage();
        using Map = Reference::PlaneMap;
        std::shared_ptr<Map> pMap;
        if (sChange.eKind == SImageChange::EKind_TurnedRight)
            pMap = std::make_shared<Map>(Map{true, -1, 1, double(h), 0});
        else if (sChange.eKind == SImageChange::EKind_TurnedLeft)
            pMap = std::make_shared<Map>(Map{true, 1, -1, 0, double(w)});
        else if (sChange.eKind == SImageChange::EKind_TurnedRound)
            pMap = std::make_shared<Map>(Map{false, -1, -1, double(w), double(h)});
        else if (sChange.eKind == SImageChange::EKind_FlippedX)
            pMap = std::make_shared<Map>(Map{false, -1, 1, double(w), 0});
        else if (sChange.eKind == SImageChange::EKind_FlippedY)
            pMap = std::make_shared<Map>(Map{false, 1, -1, 0, double(h)});
        else if (sChange.eKind == SImageChange::EKind_Cropped)
            pMap = std::make_shared<Map>(Map{false, 1, 1, -double(sChange.nLeft), -double(sChange.nTop)});
        else if (pNew->GetWidth() == w && pNew->GetHeight() == h)
            pMap = std::make_shared<Map>();
        const bool bMoves = pMap && sChange.eKind != SImageChange::EKind_Other;
        if (bMoves || (pMap && m_turned.count(pOld->GetUID()) != 0))
            m_turned.insert(pNew->GetUID());
        m_editor.Make(std::make_shared<Reference::ImageStep>(nOld, m_f.view->GetImageUID(), pMap));
        TakeZoomOver();
    }
    /// A flip, half a turn, a cut, a filter, or another image.
    void ChangeImage()
    {
        const auto pImage = std::make_shared<CImage>();
        QCOMPARE(pImage->CopyFrom(m_f.images.GetCurrentImage().get()), 0);
        const int w = pImage->GetWidth(), h = pImage->GetHeight();
        SImageChange sChange;
        int nFailed = 0;
        switch (Pick(w > 20 && h > 20 ? 6 : 4)) {
        case 0:
            sChange.eKind = SImageChange::EKind_FlippedX;
            nFailed = pImage->FlipHorizontally();
            break;
        case 1:
            sChange.eKind = SImageChange::EKind_FlippedY;
            nFailed = pImage->FlipVertically();
            break;
        case 2:
            sChange.eKind = SImageChange::EKind_TurnedRound;
            nFailed = pImage->FlipHorizontally() + pImage->FlipVertically();
            break;
        case 3: // of equal size
            break;
        case 4:
            sChange = {SImageChange::EKind_Cropped, Pick(5), Pick(5)};
            nFailed = pImage->Crop(sChange.nLeft, sChange.nTop, w - sChange.nLeft - 3, h - sChange.nTop - 2);
            break;
        default:
            nFailed = pImage->Crop(1, 1, w - 2, h - 2);
        }
        QCOMPARE(nFailed, 0);
        m_strStep = QString::asprintf("change %d", int(sChange.eKind));
        ChangeBy(sChange, [&] { m_f.ctrl->ChangeCurrentImage(pImage, sChange); });
    }

    void Remember()
    {
        m_strStep = QStringLiteral("remember");
        const QString strFile = m_editor.ids[std::size_t(m_editor.page)].file;
        m_remembered[strFile] = Store().TakeDocument();
    }
    void Apply()
    {
        m_strStep = QStringLiteral("apply");
        const QString strFile = m_editor.ids[std::size_t(m_editor.page)].file;
        const auto it = m_remembered.find(strFile);
        if (it == m_remembered.end())
            return;
        Store().Apply(it->second);
        m_editor.Make(std::make_shared<Reference::ApplyStep>(m_editor, strFile, DocumentOf(it->second)));
    }
    void Save()
    {
        m_strStep = QStringLiteral("save");
        Store().SetSaved();
        m_saved = Documents();
    }
    void SaveAndLoad()
    {
        m_strStep = QStringLiteral("save and load");
        const QString strPath = m_strFolder + QStringLiteral("/a.vantor.json");
        std::string failure;
        int nTold = 0;
        const auto told = [&](const QString&, const SReport& report) {
            failure += report.failure;
            ++nTold;
        };
        const auto saved = QObject::connect(&Store(), &CAnnotationStore::signal_Saved, told);
        const auto loaded = QObject::connect(&Store(), &CAnnotationStore::signal_Loaded, told);
        Store().Save(strPath);
        Store().Load(strPath); // behind it, on the same thread
        QTRY_COMPARE(nTold, 2);
        QObject::disconnect(saved);
        QObject::disconnect(loaded);
        QCOMPARE(failure, std::string());
        const QString strFile = m_editor.ids[std::size_t(m_editor.page)].file;
        m_editor.Make(
            std::make_shared<Reference::ApplyStep>(m_editor, strFile, m_editor.DocumentOf(strFile)));
        m_saved[strFile] = m_editor.DocumentOf(strFile);
    }
    void Close()
    {
        m_strStep = QStringLiteral("close");
        if (m_editor.ids.size() < 2)
            return;
        const auto id = m_editor.ids[std::size_t(m_editor.page)];
        m_f.ctrl->slot_CloseImage();
        m_editor.closed[id.file][id.inFile] = Reference::SaidOf(m_editor.objects);
        m_editor.ids.erase(m_editor.ids.begin() + m_editor.page);
        m_editor.kept.erase(id.id);
        m_editor.page = std::min(m_editor.page, int(m_editor.ids.size()) - 1);
        m_editor.objects = m_editor.kept[m_editor.ids[std::size_t(m_editor.page)].id];
        m_editor.pages = Pages();
        const bool bGone = std::none_of(m_editor.ids.begin(), m_editor.ids.end(),
                                        [&id](const auto& other) { return other.file == id.file; });
        if (bGone) {
            m_counts.erase(id.file);
            m_editor.closed.erase(id.file);
            m_saved.erase(id.file);
            m_remembered.erase(id.file);
        }
        TakeZoomOver();
    }

    QString m_strFolder;
    int m_nNextId = 1;
    std::map<QString, int> m_counts; ///< by file, of its pages
    std::map<QString, Reference::Document> m_saved;
    std::map<QString, SDocument> m_remembered;
    std::map<QString, int> m_done;
    std::set<unsigned int> m_turned; ///< images
};
} // namespace

class tst_StoreModel : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir m_dir;
    QStringList m_files; ///< a document last
    std::vector<std::shared_ptr<CImage>> m_pages;

private Q_SLOTS:
    void initTestCase()
    {
        qputenv("XDG_STATE_HOME", m_dir.path().toUtf8());
        const int sizes[][3] = {{200, 150, 3}, {60, 90, 1}, {37, 11, 4}};
        for (const auto& size : sizes) {
            m_files << m_dir.filePath(QString::number(size[0]) + QStringLiteral(".png"));
            const auto pImage = MakeTestImage(size[0], size[1], size[2]);
            QCOMPARE(pImage->Save(m_files.last().toStdWString()), 0);
        }
        m_files << m_dir.filePath(QStringLiteral("pages.pdf"));
        QFile file(m_files.last());
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(ThreePages()) > 0);
        file.close();
        Vantor::Utils::CPDFReader reader;
        QCOMPARE(int(reader.Read(m_files.last().toStdWString(), L"")), 0);
        reader.SetResolutionX(144.0);
        for (int i = 0; i < reader.GetPageNumber(); ++i) {
            m_pages.push_back(std::make_shared<CImage>());
            QCOMPARE(reader.RenderPage(i, m_pages.back().get()), 0);
        }
        CPageMemory::Get().SetLimit(0);
    }
    void cleanupTestCase() { CPageMemory::Get().SetLimit(CPageMemory::kDefaultLimit); }

    /// Each run has the journals for itself.
    void init() { QDir(AnnotationRecovery::GetFolder()).removeRecursively(); }

    void everyStepAgreesWithThePlainModel_data()
    {
        QTest::addColumn<bool>("document");
        QTest::newRow("pictures") << false;
        QTest::newRow("a document among them") << true;
    }
    void everyStepAgreesWithThePlainModel()
    {
        QFETCH(bool, document);
        const int nSteps = FromEnvironment("VANTOR_UNDO_STEPS", 2000);
        const int nSeed = FromEnvironment("VANTOR_UNDO_SEED", kSeed);
        qInfo("seed %d, %d steps", nSeed, nSteps);
        QElapsedTimer timer;
        timer.start();
        StoreDriver driver{unsigned(nSeed), document ? m_files : m_files.mid(0, m_files.size() - 1),
                           m_dir.path()};
        for (int i = 0; i < nSteps; ++i) {
            driver.Step(false);
            QString strDifference = driver.Compare();
            if (strDifference.isEmpty())
                strDifference = driver.CompareFiles();
            if (strDifference.isEmpty() && i % 50 == 0)
                strDifference = driver.CompareJournal();
            if (strDifference.isEmpty() && i % 10 == 0)
                strDifference = driver.ComparePages(m_files.last(), m_pages);
            QVERIFY2(strDifference.isEmpty(),
                     qPrintable(QString::asprintf("seed %d, step %d, ", nSeed, i) + strDifference));
        }
        qInfo("%d steps in %.1f s", nSteps, double(timer.elapsed()) / 1000.0);
        for (const auto& [strStep, nCount] : driver.Done())
            qInfo("%6d times %s", nCount, qPrintable(strStep));
    }
};

VANTOR_TEST_MAIN(tst_StoreModel)
#include "tst_StoreModel.moc"
