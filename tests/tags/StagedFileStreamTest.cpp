// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tags/StagedFileStream.h"

#include "support/TaggedAudio.h"
#include "tags/EditLog.h"

#include <QDir>
#include <QFileInfo>
#include <QRandomGenerator>

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <tbytevector.h>
#include <unistd.h>

using namespace Qt::Literals::StringLiterals;

namespace kruv {
namespace {

using TagLib::ByteVector;
using test::readFile;
using test::writeFile;

class StagedFile : public testing::Test
{
protected:
    StagedFile()
    {
        QFile::setPermissions(folder.path(), QFile::Permissions(0x7777));
        for (int index = 0; index < 10'000; ++index) {
            original.append(static_cast<char>(index * 7 % 251));
        }
        writeFile(path, original);
    }

    QStringList leftovers() const
    {
        return QDir(folder.path()).entryList(QDir::Files | QDir::Hidden | QDir::System);
    }

    const test::TemporaryFolder folder;
    const QString path = folder.file(u"file"_s);
    QByteArray original;
};

ByteVector bytes(int size, char value = 'x')
{
    return {static_cast<unsigned int>(size), value};
}

TEST_F(StagedFile, BehavesLikeAByteArrayUnderAnyEdits)
{
    QRandomGenerator random(20261121);
    for (int round = 0; round < 40; ++round) {
        writeFile(path, original);
        const EditLog log;
        QByteArray model = original;
        StagedFileStream stream(path);
        for (int edit = 0; edit < 12; ++edit) {
            const int start = random.bounded(static_cast<int>(model.size()) + 1);
            const int length = random.bounded(600);
            const QByteArray data(random.bounded(600), static_cast<char>('a' + edit));
            const ByteVector tagData(data.constData(), static_cast<unsigned int>(data.size()));
            switch (random.bounded(4)) {
            case 0:
                stream.insert(tagData, static_cast<unsigned long>(start), static_cast<unsigned long>(length));
                model.replace(start, std::min<qsizetype>(length, model.size() - start), data);
                break;
            case 1:
                stream.removeBlock(static_cast<unsigned long>(start), static_cast<unsigned long>(length));
                model.remove(start, length);
                break;
            case 2:
                stream.seek(start, TagLib::IOStream::Beginning);
                stream.writeBlock(tagData);
                model.replace(start, std::min<qsizetype>(data.size(), model.size() - start), data);
                break;
            default:
                stream.truncate(stream.length() - length % 50);
                model.chop(length % 50);
            }
            ASSERT_EQ(stream.length(), model.size());
            stream.seek(start / 2, TagLib::IOStream::Beginning);
            const ByteVector read = stream.readBlock(1000);
            ASSERT_EQ(QByteArray(read.data(), static_cast<qsizetype>(read.size())),
                      model.mid(start / 2, 1000));
        }
        EXPECT_EQ(readFile(path), original) << "nothing is written before commit()";
        ASSERT_TRUE(stream.commit());
        ASSERT_EQ(readFile(path), model) << "round " << round;

        const auto back = FileEdit::unpack(log.packed());
        ASSERT_TRUE(back && back->size() == 1);
        const auto undone = StagedFileStream::asBefore(path, *back);
        ASSERT_TRUE(undone && undone->commit());
        ASSERT_EQ(readFile(path), original) << "taken back in round " << round;
    }
    EXPECT_EQ(leftovers(), QStringList{u"file"_s});
}

TEST_F(StagedFile, AKillInTheMiddleOfAWriteCanBeTakenBack)
{
    QByteArray foretold;
    const auto change = [&](const std::function<void(StagedFileStream &)> &edit) {
        writeFile(path, original);
        const EditLog log([&](const QByteArray &packed, qint64 size) {
            foretold = packed;
            EXPECT_EQ(readFile(path), original) << "before anything is written";
            EXPECT_NE(size, original.size());
        });
        StagedFileStream stream(path);
        edit(stream);
        EXPECT_TRUE(stream.commit());
        EXPECT_EQ(log.packed(), foretold);
        return readFile(path);
    };
    const auto takenBack = [&](const QByteArray &found) {
        writeFile(path, found);
        const auto edits = FileEdit::unpack(foretold);
        const auto stream = edits ? StagedFileStream::asBefore(path, *edits) : nullptr;
        return stream && stream->commit() && readFile(path) == original;
    };
    const QByteArray longer = change([](auto &stream) {
        stream.insert(bytes(6'000), 0, 6'000);
        stream.insert(bytes(5'000), 9'990, 10);
    });
    const QByteArray lengthened = original + longer.mid(10'000);
    for (const QByteArray &found : {longer, original, lengthened.first(12'288), lengthened,
                                    longer.first(4'096) + lengthened.mid(4'096)}) {
        EXPECT_TRUE(takenBack(found));
    }
    for (const int place : {100, 4'097, 9'995, 14'000}) {
        QByteArray theirs = longer;
        theirs[place] = 'y';
        EXPECT_FALSE(takenBack(theirs)) << "somebody's work since, at " << place;
    }
    EXPECT_FALSE(takenBack(longer + 'y'));

    const QByteArray shorter = change([](auto &stream) {
        stream.insert(bytes(100), 9'000, 500);
        stream.truncate(9'100);
    });
    EXPECT_TRUE(takenBack(shorter));
    EXPECT_TRUE(takenBack(shorter + original.mid(shorter.size()))) << "not cut off yet";
    const QByteArray moved = change([](auto &stream) { stream.insert(bytes(100), 0, 0); });
    EXPECT_TRUE(takenBack(moved));
    EXPECT_FALSE(takenBack(original)) << "that is not how the edit leaves it";
}

TEST_F(StagedFile, ANewFileKeepsRightsAndSymbolicLink)
{
    const QString link = folder.file(u"link"_s);
    ASSERT_TRUE(QFile::link(u"file"_s, link));
    ASSERT_EQ(chmod(path.toUtf8().constData(), 0640), 0);
    StagedFileStream stream(link);
    stream.insert(bytes(100), 0, 0);
    ASSERT_TRUE(stream.commit());

    EXPECT_EQ(QFile::symLinkTarget(link), path);
    EXPECT_EQ(readFile(path), QByteArray(100, 'x') + original);
    struct stat status;
    ASSERT_EQ(stat(path.toUtf8().constData(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777U, 0640U);
}

TEST_F(StagedFile, KeepsItsHardLinksWhenTheAudioStaysInPlace)
{
    const QString other = folder.file(u"other"_s);
    ASSERT_EQ(link(path.toUtf8().constData(), other.toUtf8().constData()), 0);
    StagedFileStream stream(path);
    stream.insert(bytes(100), 0, 100);
    stream.insert(bytes(300), 9'900, 100);
    ASSERT_TRUE(stream.commit());
    EXPECT_EQ(readFile(other), QByteArray(100, 'x') + original.mid(100, 9'800) + QByteArray(300, 'x'));
}

TEST_F(StagedFile, AFullDiskLeavesTheFileAsItWas)
{
    struct Edit
    {
        const char *what;
        std::function<void(StagedFileStream &)> apply;
    };
    const Edit edits[] = {
        {"new file", [](auto &stream) { stream.insert(bytes(5'000), 0, 0); }},
        {"longer end",
         [](auto &stream) {
             stream.insert(bytes(50), 0, 50);
             stream.insert(bytes(5'000), 9'990, 10);
         }},
    };
    for (const Edit &edit : edits) {
        EXPECT_TRUE(test::withFileSizeLimit(12'000, [&] {
            StagedFileStream stream(path);
            edit.apply(stream);
            return !stream.commit();
        })) << edit.what;
        EXPECT_EQ(readFile(path), original) << edit.what;
        EXPECT_EQ(leftovers(), QStringList{u"file"_s}) << edit.what;
    }
}

TEST_F(StagedFile, InAReadOnlyFolderOnlyTheAudioMustStayInPlace)
{
    ASSERT_EQ(chmod(path.toUtf8().constData(), 0666), 0);
    ASSERT_EQ(chmod(folder.path().toUtf8().constData(), 0555), 0);
    EXPECT_TRUE(test::inUnprivilegedProcess([&] {
        StagedFileStream stream(path);
        stream.insert(bytes(100), 0, 0);
        return !stream.commit();
    }));
    EXPECT_EQ(readFile(path), original);
    EXPECT_TRUE(test::inUnprivilegedProcess([&] {
        StagedFileStream stream(path);
        stream.insert(bytes(100), 0, 100);
        return stream.commit();
    }));
    EXPECT_EQ(readFile(path), QByteArray(100, 'x') + original.mid(100));
    chmod(folder.path().toUtf8().constData(), 0755);
}

TEST_F(StagedFile, OpensRegularFilesOnly)
{
    EXPECT_FALSE(StagedFileStream(folder.path()).isOpen());
    EXPECT_FALSE(StagedFileStream(folder.file(u"missing"_s)).isOpen());
    const QString pipe = folder.file(u"pipe"_s);
    ASSERT_EQ(mkfifo(pipe.toUtf8().constData(), 0600), 0);
    EXPECT_FALSE(StagedFileStream(pipe).isOpen());
}

TEST_F(StagedFile, TakesTheLongestName)
{
    const QString longPath = folder.file(QString(255, u'n'));
    writeFile(longPath, original);
    StagedFileStream stream(longPath);
    stream.insert(bytes(1), 0, 0);
    EXPECT_TRUE(stream.commit());
    EXPECT_EQ(readFile(longPath), 'x' + original);
}

} // namespace
} // namespace kruv
