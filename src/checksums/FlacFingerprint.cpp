// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "checksums/FlacFingerprint.h"

#include "base/PathNames.h"
#include "platform/Resources.h"
#include "tasks/NSTaskWrapperSync.h"

#include <QRegularExpression>

#include <utility>

namespace kruv {

QString fingerprint(const QString &path, std::stop_token stop)
{
    NSTaskWrapperSync metaflac(toolPath(QStringLiteral("metaflac")), {QStringLiteral("--show-md5"), path},
                               std::move(stop));
    metaflac.runTask();
    const QString &output = metaflac.output();
    return isMetaflacError(output) ? output : PathNames::lastPathComponent(path) + u':' + output;
}

bool isMetaflacError(const QString &fingerprint)
{
    return fingerprint.contains(u"FLAC__METADATA_CHAIN");
}

bool isFingerprint(const QString &fingerprint)
{
    static const QRegularExpression atEnd(QStringLiteral(":[0-9a-f]{32}\n?$"));
    return atEnd.match(fingerprint).hasMatch();
}

} // namespace kruv
