// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/annotation/edit/TextHandler_p.h>

#include <VantorCommon/annotation/command/CCommandCall.h>
#include <VantorCommon/annotation/command/CImageView2DCommandAddGeometry.h>
#include <VantorCommon/annotation/command/CImageView2DCommandDeleteGeometry.h>
#include <VantorCommon/annotation/model/CImageView2DGeometryModel.h>
#include <VantorCommon/annotation/object/CImageView2DDrawableText.h>
#include <VantorCommon/view2d/CImageView2D.h>

#include <QCoreApplication>
#include <QKeyEvent>
#include <QPlainTextEdit>
#include <algorithm>
#include <utility>

namespace
{
constexpr double kNewLineHeight = 24.0; // widget pixels, about that of labels
constexpr int kMinFont = 10;            // pixels
constexpr int kMaxFont = 60;
constexpr QSize kMinEditor(240, 90);

bool IsCtrlEnter(const QKeyEvent& event)
{
    return (event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter) &&
           event.modifiers().testFlag(Qt::ControlModifier);
}
} // namespace

CTextHandler::CTextHandler(const SEditContext& context) : m_context(context)
{
    if (m_context.pModel)
        connect(m_context.pModel.data(), &CImageView2DGeometryModel::signal_ClearObject, this,
                [this] { Cancel(); });
}

CTextHandler::~CTextHandler()
{
    Cancel();
}

void CTextHandler::Begin(const TextPtr& pText)
{
    End();
    const double dblZoom = m_context.IsComplete() ? m_context.pView->GetSizePixel() : 0.0;
    if (!(dblZoom > 0.0))
        return;
    CImageView2D* pView = m_context.pView;
    if (!m_context.pModel->FindObject(pText->GetUID()))
        pText->SetLineHeight(kNewLineHeight / dblZoom);
    m_pText = pText;
    m_pEditor = new QPlainTextEdit(pText->GetText(), pView);
    m_pEditor->setAccessibleName(QStringLiteral("Text"));
    QFont font(QStringLiteral("Arial"));
    font.setPixelSize(std::clamp(qRound(0.8 * pText->GetLineHeight() * dblZoom), kMinFont, kMaxFont));
    m_pEditor->setFont(font);
    const QSize size = pView->MapToWidget(pText->GetBoundary()).size().toSize().expandedTo(kMinEditor);
    const QPoint place = pView->MapToWidget(pText->GetPosition()).toPoint();
    m_pEditor->setGeometry(std::clamp(place.x(), 0, std::max(0, pView->width() - size.width())),
                           std::clamp(place.y(), 0, std::max(0, pView->height() - size.height())),
                           std::min(size.width(), pView->width()), std::min(size.height(), pView->height()));
    QCoreApplication::instance()->installEventFilter(this);
    m_pEditor->show();
    m_pEditor->setFocus(Qt::OtherFocusReason);
    m_pEditor->selectAll();
}

bool CTextHandler::BeginAt(const QPointF& point)
{
    if (!m_context.IsComplete())
        return false;
    for (const auto& pObject : m_context.pModel->GetObjects()) {
        const auto pText = std::dynamic_pointer_cast<CImageView2DDrawableText>(pObject);
        if (!pText || !pText->IsVisible() || pText->IsLocked() || !pText->GetBoundary().contains(point))
            continue;
        Begin(pText);
        return true;
    }
    return false;
}

void CTextHandler::End()
{
    if (!m_pEditor)
        return Cancel();
    const TextPtr pText = m_pText;
    Commit(pText, CloseEditor());
}

void CTextHandler::Cancel()
{
    CloseEditor();
}

/// Returns the keyboard to the view. @return the text of the editor
QString CTextHandler::CloseEditor()
{
    m_pText.reset();
    const QPointer<QPlainTextEdit> pEditor = std::exchange(m_pEditor, nullptr);
    if (!pEditor)
        return {};
    QCoreApplication::instance()->removeEventFilter(this);
    QString strText = pEditor->toPlainText();
    if (pEditor->hasFocus() && m_context.pView)
        m_context.pView->setFocus(Qt::OtherFocusReason);
    pEditor->hide();
    pEditor->deleteLater(); // it may be in the middle of an event
    return strText;
}

void CTextHandler::Commit(const TextPtr& pText, const QString& strText)
{
    if (!m_context.IsComplete())
        return;
    const bool bBlank = strText.trimmed().isEmpty();
    const QString strBefore = pText->GetText();
    if (strBefore.isEmpty()) { // a new one
        if (bBlank)
            return;
        pText->SetText(strText);
        m_context.execute(std::make_unique<CImageView2DCommandAddGeometry>(m_context.pCtrl, pText));
    } else if (m_context.pModel->FindObject(pText->GetUID()) && strText != strBefore) {
        if (bBlank)
            m_context.execute(std::make_unique<CImageView2DCommandDeleteGeometry>(m_context.pCtrl, pText));
        else
            m_context.execute(CCommandCall::Exchange(
                strText, [pText] { return pText->GetText(); },
                [pText](const QString& strTo) { pText->SetText(strTo); }));
    }
}

/// Whether it is the editor or something inside or above it, such as its menu.
bool CTextHandler::IsOfEditor(QObject* pWatched) const
{
    for (QObject* pObject = pWatched; pObject; pObject = pObject->parent())
        if (pObject == m_pEditor)
            return true;
    return false;
}

bool CTextHandler::eventFilter(QObject* pWatched, QEvent* pEvent)
{
    if (!m_pEditor)
        return false;
    if (pWatched == m_pEditor)
        return FilterEditor(pEvent);
    const bool bElsewhere = (pEvent->type() == QEvent::MouseButtonPress || pEvent->type() == QEvent::Wheel) &&
                            pWatched->isWidgetType() && !IsOfEditor(pWatched);
    if (bElsewhere)
        End();
    return false;
}

/// @return whether to hide the event from the editor
bool CTextHandler::FilterEditor(QEvent* pEvent)
{
    if (pEvent->type() == QEvent::FocusOut) {
        const Qt::FocusReason eReason = static_cast<QFocusEvent*>(pEvent)->reason();
        if (eReason != Qt::PopupFocusReason && eReason != Qt::ActiveWindowFocusReason)
            End();
        return false;
    }
    const bool bOverride = pEvent->type() == QEvent::ShortcutOverride;
    if (!bOverride && pEvent->type() != QEvent::KeyPress)
        return false;
    const auto& event = *static_cast<QKeyEvent*>(pEvent);
    const bool bEnd = IsCtrlEnter(event);
    if (!bEnd && event.key() != Qt::Key_Escape)
        return false;
    if (bOverride)
        pEvent->accept(); // so that no menu entry takes the key
    else if (bEnd)
        End();
    else
        Cancel();
    return true;
}
