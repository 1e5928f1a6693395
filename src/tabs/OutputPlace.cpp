// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tabs/OutputPlace.h"

#include "base/InParallel.h"
#include "base/PathNames.h"
#include "base/PortableName.h"
#include "formats/TagFormats.h"
#include "tabs/NamePattern.h"

#include <vector>

namespace kruv {

QString OutputPlace::folderFor(const QString &source) const
{
    QString ofSource = PathNames::folderOf(source);
    if (folder.isEmpty()) {
        return ofSource;
    }
    QStringView outermost;
    for (const QString &root : roots) {
        const QStringView tree = root.endsWith(u'/') ? QStringView(root).chopped(1) : QStringView(root);
        const bool isAbove = source.startsWith(tree) && source.mid(tree.size(), 1) == u"/";
        if (isAbove && (outermost.isNull() || tree.size() < outermost.size())) {
            outermost = tree;
        }
    }
    return outermost.isNull() ? folder : folder + ofSource.mid(outermost.size());
}

QString OutputPlace::named(const QString &path) const
{
    const bool isBelow = !folder.isEmpty() && path.startsWith(folder);
    const qsizetype start = isBelow ? folder.size() : PathNames::folderOf(path).size();
    return isPortable ? path.first(start) + PortableName::ofPath(path.sliced(start)) : path;
}

QString OutputPlace::outputFor(const QString &source, const QString &extension) const
{
    const QString place = folderFor(source);
    if (!names) {
        return named(PathNames::outputPath(place, source, extension));
    }
    const auto tags = names->readsTags() ? TagFormats::readOrBlank(TagFormats::read, source)
                                         : std::make_shared<TagsObject>();
    const QString below = names->path(*tags, source, extension);
    const QString path = place.endsWith(u'/') ? place : place + u'/';
    return folder.isEmpty() && isPortable ? path + PortableName::ofPath(below) : named(path + below);
}

QStringList OutputPlace::outputsFor(const QStringList &sources, const QString &extension,
                                    std::size_t threads) const
{
    std::vector<QString> outputs(static_cast<std::size_t>(sources.size()));
    const bool isQuick = !names || !names->readsTags();
    inParallel(
        outputs.size(), isQuick ? 1 : threads, [] { return false; },
        [&](std::size_t index) {
            outputs[index] = outputFor(sources.at(static_cast<qsizetype>(index)), extension);
        });
    return {outputs.begin(), outputs.end()};
}

} // namespace kruv
