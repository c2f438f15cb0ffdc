// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/view2d/ImageFileLoad_p.h>

#include <Vantor/CProgress.h>
#include <Vantor/image/CImage.h>
#include <Vantor/image/ImageMemory.h>
#include <Vantor/pdf/CPDFPages.h>
#include <Vantor/pdf/CPDFReader.h>

#include <QByteArray>
#include <QRegExp>
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <memory>
#include <optional>
#include <utility>

using Vantor::Algorithms::CImage;
using Vantor::Utils::CPDFReader;

namespace
{
using namespace ImageFileLoad;

constexpr int kDocumentHead = 1024; // bytes in which the header of a document stands

/// Deliberate: any character followed by "pdf" or "PDF", anywhere in the path.
bool LooksLikePdf(const QString& strPath)
{
    return strPath.contains(QRegExp(QStringLiteral(".pdf|.PDF"), Qt::CaseSensitive, QRegExp::RegExp));
}

/// Whether the file begins as a PDF document does; nothing when it cannot be read. Readers of documents allow
/// for some bytes in front of the header.
std::optional<bool> BeginsAsPdf(const QString& strPath)
{
    // By the standard library: Qt would encode the path as the locale says, not as UTF-8.
    const std::filesystem::path path = std::filesystem::u8path(strPath.toStdString());
    std::error_code error;
    if (!std::filesystem::is_regular_file(path, error)) // opening a FIFO would wait for its other end
        return std::nullopt;
    std::ifstream file(path, std::ios::binary);
    if (!file)
        return std::nullopt;
    QByteArray head(kDocumentHead, '\0');
    file.read(head.data(), head.size());
    return head.contains("%PDF-");
}

bool IsDocument(const SRequest& request)
{
    if (request.eReader == EReader_Image || request.eReader == EReader_Document)
        return request.eReader == EReader_Document;
    const auto bContent =
        request.eReader == EReader_Content ? BeginsAsPdf(request.strPath) : std::optional<bool>();
    return bContent.value_or(LooksLikePdf(request.strPath));
}

/// @param bTried  whether a password was given that did not open it
QString WhyUnreadable(const CPDFReader& reader, int nResult, bool bTried)
{
    if (nResult != CPDFReader::EReadResult_PasswordRequired)
        return QString::fromStdString(reader.GetFailureReason());
    return bTried ? QStringLiteral("The password is wrong.")
                  : QStringLiteral("The document needs a password.");
}

SLoaded LoadImage(const SRequest& request)
{
    const QString& strPath = request.strPath;
    SLoaded loaded;
    auto pImage = std::make_shared<CImage>();
    if (pImage->Load(strPath.toStdWString()) == 0) {
        loaded.vctImages.push_back(std::move(pImage));
        return loaded;
    }
    const QString strReason = QString::fromStdString(pImage->GetFailureReason());
    if (!request.strPasted.isEmpty()) {
        loaded.strFailure = QStringLiteral("Cannot paste %1. %2").arg(request.strPasted, strReason);
        return loaded;
    }
    loaded.strLog = QStringLiteral("Cannot load image %1").arg(strPath);
    loaded.strFailure = QStringLiteral("Cannot load image %1. %2").arg(strPath, strReason);
    return loaded;
}

/// Gives the pages the name and the folder of the document.
void NamePages(const QString& strPath, SLoaded& loaded)
{
    const int nSlash = strPath.lastIndexOf(QLatin1Char('/'));
    const std::wstring strFolder = strPath.left(std::max(nSlash, 0)).toStdWString();
    const std::wstring strName = strPath.mid(nSlash + 1).toStdWString();
    for (const auto& pPage : loaded.vctImages) {
        pPage->SetName(strName);
        pPage->SetFolder(strFolder);
    }
}

QString NotAllOf(const QString& strPath, const QString& strWhy)
{
    return QStringLiteral("Cannot load all of pdf file %1. %2").arg(strPath, strWhy);
}

void RenderPages(CPDFReader& reader, const QString& strPath, const Pages& pages, SLoaded& loaded)
{
    const int nPages = reader.GetPageNumber();
    for (int i = 0; i < nPages && Vantor::CProgress::Tell(double(i) / nPages); ++i) {
        pages(i, nPages);
        auto pPage = std::make_shared<CImage>();
        if (reader.RenderPage(i, pPage.get()) != 0) {
            loaded.strFailure =
                NotAllOf(strPath, QStringLiteral("Page %1 of %2 cannot be rendered. %3")
                                      .arg(QString::number(i + 1), QString::number(nPages),
                                           QString::fromStdString(reader.GetFailureReason())));
            break;
        }
        loaded.vctImages.push_back(std::move(pPage));
    }
    pages(nPages, nPages);
}

void DeferPages(std::unique_ptr<CPDFReader> pReader, const QString& strPath, SLoaded& loaded)
{
    std::string strFailure;
    loaded.vctImages = Vantor::Utils::CPDFPages::Make(std::move(pReader), strFailure);
    if (!strFailure.empty())
        loaded.strFailure = NotAllOf(strPath, QString::fromStdString(strFailure));
}

SLoaded LoadDocument(const SRequest& request, const Pages& pages)
{
    SLoaded loaded;
    auto pReader = std::make_unique<CPDFReader>();
    pReader->SetResolutionX(request.dblResolutionX);
    // Deliberate: the Y setting goes to X, too, and overwrites it; Y itself is never set.
    pReader->SetResolutionX(request.dblResolutionY);
    const int nResult = pReader->Read(request.strPath.toStdWString(), request.strPassword.toStdWString());
    if (nResult == CPDFReader::EReadResult_OK && pReader->GetPageNumber() > 0) {
        if (request.bDeferred)
            DeferPages(std::move(pReader), request.strPath, loaded);
        else
            RenderPages(*pReader, request.strPath, pages, loaded);
        NamePages(request.strPath, loaded);
        return loaded;
    }
    loaded.bNeedsPassword = nResult == CPDFReader::EReadResult_PasswordRequired && !request.bPasswordGiven;
    loaded.strLog = QStringLiteral("Cannot load pdf file %1").arg(request.strPath);
    loaded.strFailure = QStringLiteral("Cannot load pdf file %1. %2")
                            .arg(request.strPath, WhyUnreadable(*pReader, nResult, request.bPasswordGiven));
    return loaded;
}
} // namespace

SLoaded ImageFileLoad::Load(const SRequest& request, const Pages& pages)
{
    return IsDocument(request) ? LoadDocument(request, pages) : LoadImage(request);
}

qint64 ImageFileLoad::MemoryFor(const SRequest& request)
{
    if (IsDocument(request))
        return 0;
    return static_cast<qint64>(Vantor::Algorithms::MemoryToLoad(request.strPath.toStdWString()));
}
