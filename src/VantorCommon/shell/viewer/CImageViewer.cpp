// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/shell/viewer/CImageViewer.h>

#include <Vantor/image/CImage.h>
#include <VantorCommon/annotation/model/CImageView2DGeometryModel.h>
#include <VantorCommon/annotation/model/CImageView2DToolModel.h>
#include <VantorCommon/annotation/object/CImageView2DDrawableObject.h>
#include <VantorCommon/log/CLogger.h>
#include <VantorCommon/shell/dock/CStatusBarView.h>
#include <VantorCommon/shell/viewer/ButtonRow_p.h>
#include <VantorCommon/shell/viewer/ModelStateButton_p.h>
#include <VantorCommon/shell/viewer/ViewerName_p.h>
#include <VantorCommon/view2d/CImageView2D.h>
#include <VantorCommon/view2d/CImageView2DModel.h>
#include <VantorCommon/view2d/PixelText_p.h>
#include <VantorCommon/view2d/Saturate_p.h>
#include <VantorCommon/view2d/SharedIcon_p.h>
#include <VantorCommon/view3d/CImageView3D.h>
#include <VantorCommon/view3d/OpenGLHelpers_p.h>

#include <QFocusEvent>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QListView>
#include <QSplitter>

using Vantor::Algorithms::CImage;

namespace
{
constexpr int kIconSize = 20;
constexpr int kButtonSize = 28;
constexpr int kClearPlace = 11; // in the row, beside the ruler
constexpr int kLastPlace = 14;
constexpr QRgb kTitleGround = 0xFFF0F0F0; // light

QString TitleOf(int nViewID, const CImage* pImage)
{
    if (!pImage)
        return QString::asprintf("[View-%d]", nViewID);
    return QString::asprintf("[View-%d][%dx%dx%dx%d]", nViewID, pImage->GetWidth(), pImage->GetHeight(),
                             pImage->GetChannel(), pImage->GetBitDepth());
}

void ShowState(QPushButton* pButton, bool bState)
{
    static_cast<CModelStateButton*>(pButton)->ShowState(bState);
}
} // namespace

CImageViewer::CImageViewer(CImageViewerModel*, int nViewID, QWidget* pParent)
    : QFrame(pParent), m_nViewID(nViewID)
{
    m_pMainLayout = new QVBoxLayout(this);
    m_pMainLayout->setSpacing(0);
    m_pMainLayout->setContentsMargins(0, 0, 0, 0);
    m_pMainLayout->addWidget(CreateButtons());
    m_pSplitter = new QSplitter(Qt::Horizontal, this);
    m_pMainLayout->addWidget(m_pSplitter, 1);

    CreateSideList();
    m_pSplitter->addWidget(m_pSideList);
    auto* pViewHost = new QWidget(m_pSplitter);
    m_pViewLayout = new QHBoxLayout(pViewHost);
    m_pViewLayout->setContentsMargins(0, 0, 0, 0);
    m_pViewLayout->setSpacing(0);
    m_pSplitter->addWidget(pViewHost);
    m_pSplitter->setStretchFactor(1, 1);
    m_pMainLayout->addWidget(CreateBottomLine());

    connect(m_pSplitter, &QSplitter::splitterMoved, this, &CImageViewer::slot_SplitterMoved);
    setFrameShape(QFrame::Box);
    setAccessibleName(ViewerName(m_nViewID));
    setObjectName(QString::asprintf("CImageViewer_%d", nViewID));
    setFocusPolicy(Qt::StrongFocus);
}

CImageViewer::CImageViewer(QWidget* pParent) : CImageViewer(nullptr, 0, pParent)
{
}

CImageViewer::~CImageViewer() = default;

void CImageViewer::AddButton(CButtonRow* pRow, QPushButton* pButton, const char* pIcon,
                             const QString& strName)
{
    pButton->setIcon(SharedIcon(pIcon));
    pButton->setIconSize(QSize(kIconSize, kIconSize));
    pButton->setFlat(true);
    pButton->setFocusPolicy(Qt::NoFocus);
    pButton->setFixedSize(kButtonSize, kButtonSize);
    pButton->setToolTip(strName);
    pButton->setAccessibleName(strName);
    pRow->Add(pButton);
}

QWidget* CImageViewer::CreateButtons()
{
    auto* pRow = m_pButtons = new CButtonRow(this);
    const auto add = [&](QPushButton* pButton, const char* pIcon, const QString& strName, auto pTarget) {
        AddButton(pRow, pButton, pIcon, strName);
        connect(pButton, &QPushButton::pressed, this, pTarget);
        connect(pButton, &QPushButton::pressed, this, [this, pButton] { AfterPress(pButton); });
        return pButton;
    };
    const auto plain = [&](const char* pIcon, const QString& strName, auto pTarget) {
        return add(new QPushButton(pRow), pIcon, strName, pTarget);
    };
    const auto state = [&](const char* pIcon, const QString& strName, auto pTarget) {
        return add(new CModelStateButton(pRow), pIcon, strName, pTarget);
    };
    m_pButton2D = state("2D.png", QStringLiteral("2D view"), &CImageViewer::slot_Press2D);
    m_pButton3D = state("3D.png", QStringLiteral("3D view"), &CImageViewer::slot_Press3D);
    m_pButtonSelect = state("selection.png", QStringLiteral("Select"), &CImageViewer::signal_SelectMode);
    m_pButtonPanning = state("move.png", QStringLiteral("Pan"), &CImageViewer::signal_PanningMode);
    plain("zoomfit.png", QStringLiteral("Fit to view"), &CImageViewer::signal_ZoomFit);
    plain("rotate-left.png", QStringLiteral("Rotate left"), &CImageViewer::signal_RotateLeft);
    plain("rotate-right.png", QStringLiteral("Rotate right"), &CImageViewer::signal_RotateRight);
    plain("previous.png", QStringLiteral("Previous image"), &CImageViewer::signal_Previous);
    plain("next.png", QStringLiteral("Next image"), &CImageViewer::signal_Next);
    plain("capture.png", QStringLiteral("Capture the screen"), &CImageViewer::signal_OpenSnipTool);
    plain("ruler.png", QStringLiteral("Ruler"), &CImageViewer::signal_Ruler);
    m_pButtonClear = plain("clear.png", QStringLiteral("Clear the images"), &CImageViewer::signal_ClearImage);
    plain("add.png", QStringLiteral("Add images"), &CImageViewer::signal_AddImage);
    plain("open-folder.png", QStringLiteral("Open a file"), &CImageViewer::signal_OpenFile);
    plain("save_file.png", QStringLiteral("Save the image"), &CImageViewer::signal_SaveFile);
    return pRow;
}

void CImageViewer::SetClearApart(bool bApart)
{
    m_pButtonClear->setIcon(SharedIcon(bApart ? "clear-images.png" : "clear.png"));
    m_pButtons->Move(m_pButtonClear, bApart ? kLastPlace : kClearPlace);
}

QWidget* CImageViewer::CreateBottomLine()
{
    auto* pLine = new QWidget(this);
    auto* pLayout = new QHBoxLayout(pLine);
    pLayout->setContentsMargins(0, 0, 0, 0);
    pLayout->setSpacing(0);
    pLayout->setAlignment(Qt::AlignLeft);
    m_pTitle = new QLabel(TitleOf(m_nViewID, nullptr), pLine);
    m_pTitle->setStyleSheet(QStringLiteral("QLabel{color: green;}"));
    // The dark green of the title would be illegible on a dark window.
    QPalette ground = m_pTitle->palette();
    ground.setColor(QPalette::Window, QColor(kTitleGround));
    m_pTitle->setPalette(ground);
    m_pTitle->setAutoFillBackground(true);
    m_pStatus = new QLabel(pLine);
    pLayout->addWidget(m_pTitle);
    pLayout->addWidget(m_pStatus);
    return pLine;
}

void CImageViewer::SetImageView(QWidget* pView2D, QWidget* pView3D, CStatusBarView* pStatusBar,
                                CImageView2DModel* pImageModel, CImageView2DToolModel* pToolModel)
{
    m_pView2D = pView2D;
    m_pView3D = pView3D;
    m_pImageModel = pImageModel;
    m_pToolModel = pToolModel;
    for (QWidget* pView : {pView2D, pView3D})
        if (pView) {
            if (pView == pView2D || !StartsWithoutOpenGL())
                m_pViewLayout->addWidget(pView);
            pView->installEventFilter(this);
            pView->setAccessibleName(
                QString::asprintf(pView == pView2D ? "Image %d" : "3D image %d", m_nViewID));
        }
    if (m_pImageModel) {
        connect(m_pImageModel.data(), &CImageView2DModel::signal_MousePositionForgotten, m_pStatus,
                &QLabel::clear);
        connect(m_pImageModel.data(), &CImageView2DModel::signal_PixelsCame, this,
                &CImageViewer::TakePixelsThatCame);
    }
    ShowView(true);
    if (pStatusBar) {
        m_pMainLayout->addWidget(pStatusBar);
        pStatusBar->hide();
    }
    if (auto* pImageView = dynamic_cast<CImageView2D*>(pView2D))
        connect(pImageView, &CImageView2D::signal_Switch2DTo3D, this, &CImageViewer::slot_Press3D);
    if (auto* pImageView = dynamic_cast<CImageView3D*>(pView3D))
        connect(pImageView, &CImageView3D::signal_Switch3DTo2D, this, &CImageViewer::slot_Press2D);
    if (!m_pToolModel)
        return;
    connect(m_pToolModel.data(), &CImageView2DToolModel::signal_ChangeViewMode, this,
            &CImageViewer::slot_ChangeViewMode);
    connect(m_pToolModel.data(), &CImageView2DToolModel::signal_ChangeViewType, this,
            &CImageViewer::slot_ChangeViewType);
    slot_ChangeViewMode();
    slot_ChangeViewType();
}

bool CImageViewer::Is3DShown() const
{
    return m_pView3D && !m_pView3D->isHidden();
}

unsigned int CImageViewer::GetCurrentImageUID() const
{
    const auto* pView = dynamic_cast<const CImageView2D*>(m_pView2D.data());
    return pView ? pView->GetImageUID() : Vantor::CVObject::kNoUID;
}

std::vector<std::shared_ptr<CImageView2DDrawableObject>> CImageViewer::Get2DDrawableObjects() const
{
    const auto* pView = dynamic_cast<const CImageView2D*>(m_pView2D.data());
    const auto* pModel = pView ? pView->GetGeometryModel() : nullptr;
    return pModel ? pModel->GetObjects() : std::vector<std::shared_ptr<CImageView2DDrawableObject>>();
}

void CImageViewer::slot_Press2D()
{
    ShowView(true);
}

void CImageViewer::slot_Press3D()
{
    ShowView(false);
}

void CImageViewer::ShowView(bool b2D)
{
    QWidget* pShown = b2D ? m_pView2D : m_pView3D;
    QWidget* pHidden = b2D ? m_pView3D : m_pView2D;
    // The frame has the keyboard meanwhile, so that no other viewer gets it.
    const bool bFocus = pHidden && pHidden->hasFocus();
    if (bFocus)
        setFocus(Qt::OtherFocusReason);
    // Hide one first: side by side for a moment, both would be resized to half their width.
    if (pHidden)
        pHidden->setVisible(false);
    if (pShown) {
        if (m_pViewLayout->indexOf(pShown) < 0)
            m_pViewLayout->addWidget(pShown);
        pShown->setVisible(true);
    }
    if (bFocus)
        FocusVisibleView();
    CheckView(b2D);
}

/// Not by a button group, which would uncheck the other button by nextCheckState, which does nothing here.
void CImageViewer::CheckView(bool b2D)
{
    ShowState(m_pButton2D, b2D);
    ShowState(m_pButton3D, !b2D);
}

void CImageViewer::AfterPress(QPushButton* pButton)
{
    // The visible view keeps the keyboard: undo acts only where the focus is.
    FocusVisibleView();
    // A dialog that the press opened has consumed the release.
    if (QGuiApplication::mouseButtons() == Qt::NoButton)
        pButton->setDown(false);
}

void CImageViewer::FocusVisibleView()
{
    QWidget* pView = m_pView2D && !m_pView2D->isHidden() ? m_pView2D : m_pView3D;
    if (pView)
        pView->setFocus(Qt::OtherFocusReason);
}

void CImageViewer::slot_ChangeViewMode()
{
    ShowState(m_pButtonSelect, false);
    ShowState(m_pButtonPanning, false);
    if (!m_pToolModel)
        return;
    if (m_pToolModel->GetViewMode() == EImageView2DMode_Selecting)
        ShowState(m_pButtonSelect, true);
    else if (m_pToolModel->GetViewMode() == EImageView2DMode_Panning)
        ShowState(m_pButtonPanning, true);
}

void CImageViewer::slot_ChangeViewType()
{
    if (!m_pToolModel)
        return;
    const EImageView2DType eType = m_pToolModel->GetViewType();
    if (eType == EImageView2DType_2D || eType == EImageView2DType_3D)
        CheckView(eType == EImageView2DType_2D);
}

void CImageViewer::slot_ChangeMousePosition()
{
    const auto pImage = m_pImageModel ? m_pImageModel->GetCurrentImage() : nullptr;
    if (!pImage)
        return;
    const QPointF pos = m_pImageModel->GetMousePosition();
    m_pStatus->setText(PixelReadout(*pImage, TruncateToInt(pos.x()), TruncateToInt(pos.y())));
}

void CImageViewer::slot_ChangeCurrentImage()
{
    const auto pImage = m_pImageModel ? m_pImageModel->GetCurrentImage() : nullptr;
    m_pTitle->setText(TitleOf(m_nViewID, pImage.get()));
    if (!pImage) {
        m_pStatus->clear();
        return;
    }
    RenewThumbnail(m_pImageModel->GetCurrentIndex(), pImage.get());
}

void CImageViewer::slot_SplitterMoved(int, int)
{
    m_bListWidthChosen = true;
    ResizeSideView();
}

void CImageViewer::slot_AddDrawableObject(unsigned int nUID, QString strName)
{
    if (!strName.isEmpty())
        Q_EMIT signal_AddDrawableObjectWithViewID(m_nViewID, GetCurrentImageUID(), nUID, strName);
}

void CImageViewer::slot_DeleteDrawableObject(unsigned int nUID, QString strName)
{
    if (!strName.isEmpty())
        Q_EMIT signal_DeleteDrawableObjectWithViewID(m_nViewID, GetCurrentImageUID(), nUID, strName);
}

void CImageViewer::slot_BeforeDeleteDrawableObject(unsigned int nUID, QString strName)
{
    if (!strName.isEmpty())
        Q_EMIT signal_BeforeDeleteDrawableObjectWithViewID(m_nViewID, GetCurrentImageUID(), nUID, strName);
}

void CImageViewer::slot_ChangeDrawableObjectProperty(unsigned int nUID)
{
    Q_EMIT signal_ChangeDrawableObjectProperty(nUID);
    Q_EMIT signal_ChangeDrawableObjectPropertyWithViewID(m_nViewID, GetCurrentImageUID(), nUID);
}

void CImageViewer::ShowFocus(bool bFocus)
{
    const QString strBorder = bFocus ? QStringLiteral("rgb(0, 100, 200)") : QStringLiteral("none");
    // By its name, because a form gives the viewer a name of its own.
    const QString strStyle = QStringLiteral("#%1 { border: 0.5px solid %2; }").arg(objectName(), strBorder);
    if (strStyle != styleSheet())
        setStyleSheet(strStyle);
}

void CImageViewer::focusInEvent(QFocusEvent* pEvent)
{
    CLogger::Write(DEBUG, "Focus In  %d", m_nViewID);
    ShowFocus(true);
    QFrame::focusInEvent(pEvent);
    // A click beside the view (on a button, a thumbnail, the labels) means the view.
    if (pEvent->reason() == Qt::MouseFocusReason)
        FocusVisibleView();
}

void CImageViewer::focusOutEvent(QFocusEvent* pEvent)
{
    CLogger::Write(DEBUG, "Focus Out  %d", m_nViewID);
    ShowFocus(false);
    QFrame::focusOutEvent(pEvent);
}

void CImageViewer::mousePressEvent(QMouseEvent* pEvent)
{
    CLogger::Write(DEBUG, "mousePressEvent %d", m_nViewID);
    ShowFocus(true);
    QFrame::mousePressEvent(pEvent);
}

void CImageViewer::resizeEvent(QResizeEvent* pEvent)
{
    QFrame::resizeEvent(pEvent);
    FitSideList();
    ResizeSideView();
}

bool CImageViewer::eventFilter(QObject* pWatched, QEvent* pEvent)
{
    if (pEvent->type() == QEvent::FocusIn)
        ShowFocus(true);
    else if (pEvent->type() == QEvent::FocusOut)
        ShowFocus(false);
    else if (pEvent->type() == QEvent::Resize && pWatched == m_pSideList->viewport())
        ResizeSideView();
    else if (pEvent->type() == QEvent::MouseButtonPress)
        m_bListLeads = pWatched == m_pSideList->viewport();
    else if (pEvent->type() == QEvent::KeyPress && m_bListLeads)
        return StepInList(*static_cast<QKeyEvent*>(pEvent)) && m_bViewKeys;
    return QFrame::eventFilter(pWatched, pEvent);
}
