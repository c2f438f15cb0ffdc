// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/measure/CMeasurementCtrl.h>

#include <Vantor/geometry/CGeometry.h>
#include <Vantor/image/CImage.h>
#include <VantorCommon/annotation/object/ShapeKinds.h>
#include <VantorCommon/annotation/store/CAnnotationStore.h>
#include <VantorCommon/measure/CMeasurementView.h>
#include <VantorCommon/measure/LiveMeasure_p.h>
#include <VantorCommon/settings/CSettingManager.h>
#include <VantorCommon/view2d/CImageView2D.h>
#include <VantorCommon/view2d/CImageView2DCtrl.h>
#include <VantorCommon/view2d/CImageView2DModel.h>

#include <QFileDialog>
#include <QFileInfo>
#include <QStringList>
#include <unordered_map>
#include <utility>

namespace Measured = Vantor::Algorithms;
using Measured::CCalibration;
using Measured::CImage;
using Measured::SMeasurement;

namespace
{
const auto kColumns = QStringLiteral("MEASURE_COLUMNS"); // keys, with commas between them

using ObjectPtr = LiveMeasure::ObjectPtr;
using GeometryPtr = std::shared_ptr<Vantor::Geometry::CGeometry>;

bool IsSame(const CCalibration& a, const CCalibration& b)
{
    return a.GetSize().unit == b.GetSize().unit && a.GetSize().x == b.GetSize().x &&
           a.GetSize().y == b.GetSize().y && a.GetOrigin().x == b.GetOrigin().x &&
           a.GetOrigin().y == b.GetOrigin().y;
}

/// What a measurement was made of.
struct SVersion {
    unsigned int nRevision = 0; ///< of the object
    unsigned int nImage = 0;    ///< identifier of the image
    int nPage = 0;
    CCalibration calibration;

    bool operator==(const SVersion& other) const
    {
        return nRevision == other.nRevision && nImage == other.nImage && nPage == other.nPage &&
               IsSame(calibration, other.calibration);
    }
};

struct SKnown {
    SVersion version;
    std::shared_ptr<const SMeasurement> pMeasured;
};

/// The shapes of one image that a job shall measure; nothing of it belongs to the GUI thread.
struct SBatch {
    std::shared_ptr<const CImage> pImage;
    CCalibration calibration;
    std::vector<Measured::SMeasuredShape> vctShapes;
    std::vector<GeometryPtr> vctCopies; ///< of their geometries
    std::vector<std::pair<unsigned int, SVersion>> vctKeys;
    std::vector<SMeasurement> vctMeasured;
};

using Batches = std::vector<SBatch>;

/// On a thread of the pool. A page that was rendered for this is let go before the next one.
void MeasureAll(Batches& batches)
{
    for (SBatch& batch : batches) {
        batch.vctMeasured = Measured::MeasureShapes(batch.pImage.get(), batch.vctShapes, batch.calibration);
        batch.pImage.reset();
    }
}

std::vector<int> StoredColumns()
{
    std::vector<int> vctColumns;
    for (const QString& strKey : CSettingManager::GetString(kColumns, QString()).split(QLatin1Char(',')))
        if (const int nColumn = Measured::FindMeasurementColumn(strKey.toStdString()); nColumn >= 0)
            vctColumns.push_back(nColumn);
    return vctColumns.empty() ? Measured::GetUsualMeasurementColumns() : vctColumns;
}

void StoreColumns(const std::vector<int>& vctColumns)
{
    QStringList lstKeys;
    for (const int nColumn : vctColumns)
        lstKeys << QString::fromStdString(
            Measured::GetMeasurementColumns()[static_cast<std::size_t>(nColumn)].key);
    CSettingManager::Set(kColumns, lstKeys.join(QLatin1Char(',')));
}
} // namespace

struct CMeasurementCtrl::SPrivate {
    QPointer<CMeasurementView> pTable;
    QPointer<CImageView2D> pView;
    Calibrate calibrate;
    std::vector<SMeasurementRow> vctWanted;         ///< without measurements
    std::unordered_map<unsigned int, SKnown> known; ///< by the object's identifier
    CLiveMeasure live;

    explicit SPrivate(CMeasurementView* pPanel) : pTable(pPanel), live(pPanel, [this] { return Take(); }) {}

    CJob::Work Take();
    void Gather(const CImageView2DCtrl& ctrl, int nImage, bool bSeveral, Batches& batches);
    void Add(const ObjectPtr& pObject, SVersion version, SBatch& batch);
    void Keep(Batches& batches);
    void Show();
};

void CMeasurementCtrl::SPrivate::Add(const ObjectPtr& pObject, SVersion version, SBatch& batch)
{
    const auto it = known.find(pObject->GetUID());
    version.nRevision = pObject->GetRevision();
    if (it != known.end() && it->second.version == version)
        return;
    const SShapeKind* pKind = ShapeKinds::Of(*pObject);
    batch.vctCopies.push_back(LiveMeasure::GeometryOf(*pObject)->Clone());
    batch.vctShapes.push_back({pObject->GetName().toStdString(),
                               pKind ? pKind->strName.toStdString() : std::string(), version.nPage,
                               batch.vctCopies.back().get()});
    batch.vctKeys.emplace_back(pObject->GetUID(), version);
}

/// The shapes of an image, and a batch of those that are not known.
void CMeasurementCtrl::SPrivate::Gather(const CImageView2DCtrl& ctrl, int nImage, bool bSeveral,
                                        Batches& batches)
{
    const CImageView2DModel* pImages = ctrl.GetImageModel();
    const bool bShown = nImage == pImages->GetCurrentIndex();
    SBatch batch;
    batch.pImage = pImages->GetImage(nImage);
    if (calibrate)
        batch.calibration = calibrate(ctrl, nImage);
    SVersion version;
    version.nImage = batch.pImage ? batch.pImage->GetUID() : CImage::kNoUID;
    version.nPage = bSeveral ? nImage + 1 : 0;
    version.calibration = batch.calibration;
    auto vctObjects = ctrl.GetAnnotationStore()->GetObjects(bShown ? CAnnotationStore::kShown : nImage);
    if (const ObjectPtr pDrawn = bShown ? LiveMeasure::Drawn(ctrl) : nullptr)
        vctObjects.insert(vctObjects.begin(), pDrawn);
    for (const ObjectPtr& pObject : vctObjects) {
        if (!LiveMeasure::GeometryOf(*pObject))
            continue;
        vctWanted.push_back({pObject, nImage, nullptr});
        Add(pObject, version, batch);
    }
    if (!batch.vctShapes.empty())
        batches.push_back(std::move(batch));
}

CJob::Work CMeasurementCtrl::SPrivate::Take()
{
    const CImageView2DCtrl* pCtrl = live.GetTarget();
    const CImageView2DModel* pImages = pCtrl ? pCtrl->GetImageModel() : nullptr;
    auto pBatches = std::make_shared<Batches>();
    vctWanted.clear();
    if (pImages) {
        // The only set of a list is on no page.
        const bool bSets = pImages->GetImageCount() > 1 && pCtrl->GetAnnotationStore()->GetPageId() > 0;
        const bool bAll = bSets && pTable->HasAllPages();
        pTable->SetShownImage(pImages->GetCurrentIndex());
        pTable->GetModel()->SetPages(bAll);
        if (bAll)
            for (int i = 0; i < pImages->GetImageCount(); ++i)
                Gather(*pCtrl, i, bSets, *pBatches);
        else
            Gather(*pCtrl, pImages->GetCurrentIndex(), bSets, *pBatches);
    }
    if (pBatches->empty()) {
        Show();
        return nullptr;
    }
    return [this, pBatches](Vantor::CProgress&) -> CJob::Finish {
        MeasureAll(*pBatches);
        return [this, pBatches] { Keep(*pBatches); };
    };
}

void CMeasurementCtrl::SPrivate::Keep(Batches& batches)
{
    for (SBatch& batch : batches)
        for (std::size_t i = 0; i < batch.vctMeasured.size(); ++i)
            known[batch.vctKeys[i].first] = {batch.vctKeys[i].second, std::make_shared<const SMeasurement>(
                                                                          std::move(batch.vctMeasured[i]))};
    Show();
}

/// Shows what is wanted and known, and forgets the rest.
void CMeasurementCtrl::SPrivate::Show()
{
    std::unordered_map<unsigned int, SKnown> present;
    std::vector<SMeasurementRow> vctRows;
    for (SMeasurementRow& row : vctWanted) {
        const auto it = known.find(row.pObject->GetUID());
        if (it == known.end())
            continue; // memory has run out
        row.pMeasured = it->second.pMeasured;
        present.insert(*it);
        vctRows.push_back(std::move(row));
    }
    vctWanted.clear();
    known = std::move(present);
    if (pTable)
        pTable->GetModel()->SetRows(std::move(vctRows));
}

CMeasurementCtrl::CMeasurementCtrl(CMeasurementView* pTable, QObject* pParent)
    : QObject(pParent), m_p(std::make_unique<SPrivate>(pTable))
{
    if (!pTable)
        return;
    pTable->GetModel()->SetColumns(StoredColumns());
    connect(pTable, &CMeasurementView::signal_ChangeColumns, this,
            [this] { StoreColumns(m_p->pTable->GetModel()->GetColumns()); });
    connect(pTable, &CMeasurementView::signal_ChangeAllPages, this, [this] { Follow(); });
    connect(pTable, &CMeasurementView::signal_Save, this, &CMeasurementCtrl::slot_Save);
    connect(pTable, &CMeasurementView::signal_Show, this, [this](const SMeasurementRow& row) {
        CImageView2DCtrl* pCtrl = m_p->live.GetTarget();
        if (!pCtrl || !m_p->pView || !row.pObject)
            return;
        if (pCtrl->GetImageModel() && pCtrl->GetImageModel()->GetCurrentIndex() != row.nImage)
            pCtrl->slot_SelectImage(row.nImage);
        m_p->pView->BringIntoView(row.pObject->GetBoundary());
    });
}

CMeasurementCtrl::~CMeasurementCtrl() = default;

void CMeasurementCtrl::SetTarget(CImageView2DCtrl* pCtrl, CImageView2D* pView)
{
    m_p->pView = pView;
    m_p->live.SetTarget(pCtrl);
}

void CMeasurementCtrl::SetCalibration(Calibrate calibrate)
{
    m_p->calibrate = std::move(calibrate);
    Follow();
}

void CMeasurementCtrl::Follow()
{
    m_p->live.FollowLater();
}

void CMeasurementCtrl::slot_Save()
{
    if (!m_p->pTable)
        return;
    auto* pDialog = new QFileDialog(m_p->pTable->window(), QStringLiteral("Save Table"), QString(),
                                    QStringLiteral("CSV (*.csv *.CSV)"));
    pDialog->setAttribute(Qt::WA_DeleteOnClose);
    pDialog->setAcceptMode(QFileDialog::AcceptSave);
    pDialog->setDefaultSuffix(QStringLiteral("csv"));
    connect(pDialog, &QFileDialog::fileSelected, this, &CMeasurementCtrl::slot_SaveTo);
    pDialog->open();
}

void CMeasurementCtrl::slot_SaveTo(const QString& strPath)
{
    if (!m_p->pTable)
        return;
    const CMeasurementModel& model = *m_p->pTable->GetModel();
    SJob sJob;
    sJob.strTitle = QStringLiteral("Save %1").arg(QFileInfo(strPath).fileName());
    sJob.bMustFinish = true;
    CJobs::Get().Start(this, sJob,
                       [this, strPath, vctRows = model.GetMeasurements(),
                        vctColumns = model.GetShownColumns()](Vantor::CProgress&) -> CJob::Finish {
                           const std::string failure =
                               Measured::SaveMeasurements(vctRows, vctColumns, strPath.toStdString());
                           return [this, strPath, failure] {
                               if (failure.empty())
                                   Q_EMIT signal_Saved(strPath);
                               else
                                   Q_EMIT signal_Failed(QStringLiteral("Cannot save table %1. %2")
                                                            .arg(strPath, QString::fromStdString(failure)));
                           };
                       });
}
