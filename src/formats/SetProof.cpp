// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "formats/SetProof.h"

#include "base/PathNames.h"
#include "formats/Formats.h"

#include <QLocale>

#include <algorithm>
#include <utility>

namespace kruv {

namespace {

QString number(std::int64_t value)
{
    return QLocale(QLocale::English, QLocale::UnitedStates).toString(static_cast<qlonglong>(value));
}

} // namespace

SetProof::SetProof(Proof::Change change, Proof::Progress progress)
    : m_change(change)
    , m_progress(std::move(progress))
{
}

std::optional<Proof::Finding> SetProof::show(const QStringList &sources, const QStringList &outputs)
{
    for (const QString &output : outputs) {
        Formats::requireContent(output, Formats::ofType(PathNames::fileType(output)));
    }
    for (const QString &source : sources) {
        if (const QString obstacle = Proof::obstacle(source); !obstacle.isEmpty()) {
            m_obstacle = tr("nothing can be shown for %1: %2").arg(source, obstacle);
            return std::nullopt;
        }
    }
    auto finding = Proof::sameAudio({.sources = sources, .outputs = outputs, .change = m_change}, m_progress);
    if (finding) {
        m_isByFile = m_isByFile && sources.size() == 1 && outputs.size() == 1;
        m_files += std::max(sources.size(), outputs.size());
        m_frames += finding->frames;
        m_added += finding->added;
        m_cut += finding->cut;
        m_digests.append(QString::fromLatin1(finding->digest.toHex()));
        m_decoder = finding->decoder;
    }
    return finding;
}

ProofNote SetProof::note() const
{
    if (!m_obstacle.isEmpty()) {
        return {.unproven = m_obstacle};
    }
    return {.kind = QStringLiteral("same-set"),
            .digest = m_digests.join(u' '),
            .decoder = m_decoder,
            .words = words()};
}

QString SetProof::words() const
{
    if (m_isByFile && m_added == 0 && m_cut == 0) {
        return {};
    }
    const QString files = m_files == 1 ? tr("1 file")
                          : m_isByFile ? tr("%1 files").arg(number(m_files))
                                       : tr("%1 tracks").arg(number(m_files));
    if (m_cut > 0) {
        return tr("%1, %2 - %3 frames of silence at the ends").arg(files, number(m_frames), number(m_cut));
    }
    if (m_added > 0) {
        return tr("%1, %2 + %3 frames of silence at the end").arg(files, number(m_frames), number(m_added));
    }
    return tr("%1, %2 frames").arg(files, number(m_frames));
}

} // namespace kruv
