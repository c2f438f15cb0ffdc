// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// Zoom and place in CMainWindow: the entries of the menu, and the field in the status bar.
#include "CActionTable.h"
#include "CMainWindow.h"
#include "CMessageBar.h"
#include "CZoomField.h"
#include "HostSettings.h"
#include "MenuKeys.h"
#include "Viewers.h"

#include <VantorCommon/annotation/object/CImageView2DDrawableObject.h>
#include <VantorCommon/settings/CSettingManager.h>
#include <VantorCommon/shell/center/CCenterCtrl.h>
#include <VantorCommon/shell/center/CCenterModel.h>
#include <VantorCommon/shell/viewer/CImageViewer.h>
#include <VantorCommon/shell/viewer/CImageViewerCtrl.h>
#include <VantorCommon/view2d/CImageView2D.h>

#include <QAction>
#include <QKeyEvent>
#include <QMenu>
#include <QStatusBar>

using MenuKeys::Key;
using MenuKeys::Keys;

namespace
{
constexpr double kZoomStep = 1.25;
constexpr double kShapeMargin = 0.1; // of the box of the shape, on each side
constexpr double kEqual = 1e-6;
constexpr Qt::Key kOtherKey = Qt::Key_X;

/// A step from one zoom to another that does not jump over 100 %.
double Stepped(double dblZoom, double dblFactor)
{
    const double dblNew = dblZoom * dblFactor;
    const bool bJumps = (dblZoom < 1.0 - kEqual && dblNew > 1.0) || (dblZoom > 1.0 + kEqual && dblNew < 1.0);
    return bJumps ? 1.0 : dblNew;
}

void SetZoom(CImageView2D* pView, double dblZoom)
{
    pView->SetZoom(dblZoom, QRectF(pView->rect()).center());
}

/// The box around all selected shapes; null without one.
QRectF SelectedBounds(const SViewer& viewer)
{
    QRectF bounds;
    for (const auto& pObject : viewer.pCtrl->Get2DDrawableObjects())
        if (pObject->GetSelected())
            bounds |= pObject->GetBoundary();
    return bounds;
}
} // namespace

void CMainWindow::CreateZoomMenu(QMenu* pParent)
{
    const auto view = [this] { return m_pViewers->Active().View2D(); };
    const auto shows2D = [this] { return ActiveShows2D(); };
    const auto hasSelection = [this, shows2D] {
        return shows2D() && !SelectedBounds(m_pViewers->Active()).isNull();
    };
    QMenu* pMenu = pParent->addMenu(tr("&Zoom"));
    const auto add = [&](const SActionText& text, const QString& strTip, const QList<QKeySequence>& lstKeys,
                         const std::function<void()>& func, const CActionTable::Condition& isUseful,
                         const CActionTable::Condition& isChecked = {}) {
        QAction* pAction = m_pActions->Add(pMenu, {text, QIcon(), lstKeys}, func, isUseful, isChecked);
        pAction->setStatusTip(strTip);
        return pAction;
    };
    add(
        QT_TR_NOOP("Zoom &In"), tr("Enlarge the image about the middle of the view"),
        Key("Ctrl++") + Key("Ctrl+="), [view] { SetZoom(view(), Stepped(view()->GetZoom(), kZoomStep)); },
        shows2D);
    add(
        QT_TR_NOOP("Zoom &Out"), tr("Make the image smaller about the middle of the view"), Key("Ctrl+-"),
        [view] { SetZoom(view(), Stepped(view()->GetZoom(), 1.0 / kZoomStep)); }, shows2D);
    add(
        QT_TR_NOOP("&Actual Size"), tr("One pixel of the screen for each pixel of the image: 100 %"),
        Key("1") + Key("Ctrl+Alt+0"), [view] { SetZoom(view(), 1.0); }, shows2D);
    add(
        QT_TR_NOOP("Fit &Width"), tr("Make the image as wide as the view"), Key("W"),
        [view] { view()->FitWidth(); }, shows2D);
    add(
        QT_TR_NOOP("To a &Rectangle"), tr("Drag a rectangle; what it encloses fills the view"), Key("Z"),
        [this, view] {
            view()->StartZoomBox();
            m_pViewers->FocusActive();
        },
        shows2D);
    add(
        QT_TR_NOOP("To the &Shape"), tr("Show the selected annotations as large as possible"), Key("Shift+Z"),
        [this, view] {
            const QRectF box = SelectedBounds(m_pViewers->Active());
            const QPointF margin(box.width() * kShapeMargin, box.height() * kShapeMargin);
            view()->ZoomTo(QRectF(box.topLeft() - margin, box.bottomRight() + margin));
        },
        hasSelection);
    QAction* pType = add(
        QT_TR_NOOP("&Type a Zoom..."), tr("Type the zoom in the status bar"), Key("Ctrl+Alt+Z"),
        [this] { m_pZoom->setFocus(Qt::ShortcutFocusReason); }, shows2D);
    pMenu->addSeparator();
    add(
        QT_TR_NOOP("&Minimap"), tr("Show the whole image in a corner while a part of it is in view"),
        Key("M"), [this] { SetMiniMap(!HasMiniMap()); }, {}, [this] { return HasMiniMap(); });
    CreateZoomField(pType);
}

/// Viewers beside each other: linked, as their difference, one in the place of the next.
void CMainWindow::CreateCompareMenu(QMenu* pParent)
{
    QMenu* pMenu = pParent->addMenu(tr("&Compare"));
    const auto canCompare = [this] { return ActiveShows2D() && NextWithImage() >= 0; };
    m_pActions
        ->Add(
            pMenu, {QT_TR_NOOP("&Link Viewers"), QIcon(), Key("L")},
            [this] { m_pCtrl->SetLinked(!m_pCtrl->IsLinked(), m_pViewers->Active().pView->GetViewID()); }, {},
            [this] { return m_pCtrl->IsLinked(); })
        ->setStatusTip(tr("Zoom and pan all shown viewers together, with a cross where the mouse is"));
    m_pActions
        ->Add(
            pMenu, {QT_TR_NOOP("&Show Other Viewer"), QIcon(), {}}, [this] { ShowOther(!m_bShowsOther); },
            canCompare, [this] { return m_bShowsOther; })
        ->setStatusTip(tr("Show the next viewer's image in this one, at the same place; the key X does it "
                          "while it is held"));
    QMenu* pDifference = pMenu->addMenu(tr("&Difference"));
    for (const SViewer& viewer : m_pViewers->All())
        m_pActions
            ->Add(
                pDifference,
                {{tr("With Viewer &%1").arg(viewer.pView->GetViewID()),
                  QStringLiteral("With Viewer %1").arg(viewer.pView->GetViewID())},
                 QIcon(),
                 {}},
                [this, &viewer] {
                    m_pCtrl->AddDifference(m_pViewers->Active().pView->GetViewID(),
                                           viewer.pView->GetViewID());
                },
                [this, &viewer] {
                    return ActiveShows2D() && viewer.HasImage() && !viewer.pView->isHidden() &&
                           viewer.pView != m_pViewers->Active().pView;
                })
            ->setStatusTip(tr("Add the difference of the two images to this viewer's list"));
    connect(m_pViewers.get(), &CViewers::signal_ChangeActive, this, [this] { ShowOther(false); });
    connect(m_pModel.get(), &CCenterModel::signal_ChangedSize, this, [this] { ShowOther(false); });
}

/// The viewer behind the active one, in a circle, that is shown and has an image; -1 without one.
int CMainWindow::NextWithImage() const
{
    const auto& viewers = m_pViewers->All();
    const int nCount = static_cast<int>(viewers.size());
    const int nActive = m_pViewers->Active().pView->GetViewID();
    for (int i = 1; i < nCount; ++i) {
        const SViewer& viewer = viewers[static_cast<std::size_t>((nActive + i) % nCount)];
        if (viewer.HasImage() && !viewer.pView->isHidden())
            return viewer.pView->GetViewID();
    }
    return -1;
}

void CMainWindow::ShowOther(bool bOther)
{
    m_bShowsOther = bOther && ActiveShows2D() && NextWithImage() >= 0;
    if (m_bShowsOther)
        m_pCtrl->ShowOther(m_pViewers->Active().pView->GetViewID(), NextWithImage());
    else
        m_pCtrl->HideOther();
}

void CMainWindow::keyPressEvent(QKeyEvent* pEvent)
{
    const bool bOther = pEvent->key() == kOtherKey && pEvent->modifiers() == Qt::NoModifier;
    if (bOther && !pEvent->isAutoRepeat())
        ShowOther(true);
    else if (!bOther)
        QMainWindow::keyPressEvent(pEvent);
}

void CMainWindow::keyReleaseEvent(QKeyEvent* pEvent)
{
    if (pEvent->key() == kOtherKey && !pEvent->isAutoRepeat())
        ShowOther(false);
    else
        QMainWindow::keyReleaseEvent(pEvent);
}

/// A key that is held while another window comes is released there.
void CMainWindow::changeEvent(QEvent* pEvent)
{
    if (pEvent->type() == QEvent::ActivationChange && !isActiveWindow() && m_bShowsOther)
        ShowOther(false);
    QMainWindow::changeEvent(pEvent);
}

/// @param pType  enabled when the field can be used
void CMainWindow::CreateZoomField(QAction* pType)
{
    m_pZoom = new CZoomField(this);
    statusBar()->addPermanentWidget(m_pZoom);
    const auto show = [this, pType] {
        m_pZoom->setEnabled(pType->isEnabled());
        m_pZoom->ShowZoom(pType->isEnabled() ? m_pViewers->Active().View2D()->GetZoom() : 0.0);
    };
    connect(pType, &QAction::changed, m_pZoom, show);
    connect(m_pViewers.get(), &CViewers::signal_ChangeActive, m_pZoom, show);
    connect(m_pModel.get(), &CCenterModel::signal_ChangedSize, m_pZoom, show);
    for (const SViewer& viewer : m_pViewers->All()) {
        const CImageView2D* pView = viewer.View2D();
        connect(pView, &CImageView2D::signal_ChangeZoom, m_pZoom, [this, pView, pType, show] {
            if ((pView->GetZoom() > 0.0) != pType->isEnabled()) // the image came or went
                m_pActions->Update();
            show();
        });
    }
    connect(m_pZoom, &CZoomField::signal_Zoom, this,
            [this](double dblZoom) { SetZoom(m_pViewers->Active().View2D(), dblZoom); });
    connect(m_pZoom, &CZoomField::signal_Refused, this, [this](const QString& strText) {
        m_pMessages->Tell(tr("\"%1\" is no zoom. Type a number of percent, such as 150.").arg(strText));
    });
    connect(m_pZoom, &CZoomField::signal_Left, m_pViewers.get(), &CViewers::FocusActive);
    SetMiniMap(HasMiniMap());
}

bool CMainWindow::ActiveShows2D() const
{
    const SViewer& viewer = m_pViewers->Active();
    return viewer.HasImage() && !viewer.pView->Is3DShown();
}

bool CMainWindow::HasMiniMap() const
{
    return CSettingManager::GetInt(HostSettings::kMiniMap, 0) != 0;
}

void CMainWindow::SetMiniMap(bool bOn)
{
    if (bOn != HasMiniMap())
        CSettingManager::Set(HostSettings::kMiniMap, bOn ? 1 : 0);
    for (const SViewer& viewer : m_pViewers->All())
        viewer.View2D()->SetMiniMap(bOn);
}
