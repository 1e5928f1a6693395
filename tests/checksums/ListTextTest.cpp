// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "checksums/ListText.h"

#include "support/QtPrinters.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;
using namespace kruv;

namespace {

QStringList texts(const QByteArray &list)
{
    QStringList found;
    for (const ListText::Line &line : ListText::lines(list)) {
        found << line.text;
    }
    return found;
}

TEST(ListText, ReadsEveryLineEndAndEncoding)
{
    const QStringList expected{u"aé *x.wav"_s, u"b *y.wav"_s};
    const QString text = expected.join(u'\n') + u'\n';
    const QByteArray utf16(reinterpret_cast<const char *>(text.utf16()), text.size() * 2);
    EXPECT_EQ(texts("a\xc3\xa9 *x.wav\nb *y.wav\n"), expected);
    EXPECT_EQ(texts("a\xc3\xa9 *x.wav\nb *y.wav"), expected) << "no break at the end";
    EXPECT_EQ(texts("a\xc3\xa9 *x.wav\r\n\r\nb *y.wav\r\n"), expected) << "Windows";
    EXPECT_EQ(texts("a\xc3\xa9 *x.wav\rb *y.wav\r"), expected) << "old Macintosh";
    EXPECT_EQ(texts("\xef\xbb\xbf"
                    "a\xc3\xa9 *x.wav\nb *y.wav\n"),
              expected)
        << "byte-order mark";
    EXPECT_EQ(texts("\xff\xfe" + utf16), expected) << "UTF-16";
    EXPECT_EQ(texts("a\xe9 *x.wav\nb *y.wav\n"), expected) << "Latin-1";
    EXPECT_TRUE(texts("").isEmpty());
    EXPECT_TRUE(texts("\n\r\n\n").isEmpty());
}

TEST(ListText, KeepsTheBytesOfNamesThatAreNotUtf8)
{
    const auto lines = ListText::lines("0a *l\xe9t.wav\r\n");
    ASSERT_EQ(lines.size(), 1);
    const auto entry = ListText::md5Entry(lines[0]);
    ASSERT_TRUE(entry);
    EXPECT_EQ(entry->name, u"lét.wav"_s);
    EXPECT_EQ(entry->encodedName, QByteArray("l\xe9t.wav"));
}

TEST(ListText, SplitsMd5Lines)
{
    struct Row
    {
        const char *line;
        const char *hash; // null: not a line of such a list
        const char *name;
    };
    const Row rows[] = {
        {"0a *x.wav", "0a", "x.wav"},
        {"  0a   *  x.wav \t", "0a", "x.wav"},
        {"0a */sub/x.wav", "0a", "/sub/x.wav"},
        {"0a *a *b.wav", "0a", "a"},
        {"\\0a *a\\nb\\\\c\\r.wav", "0a", "a\nb\\c\r.wav"},
        {"0a *a\\nb.wav", "0a", "a\\nb.wav"},
        {"0a  x.wav", nullptr, nullptr},
        {"x.wav", nullptr, nullptr},
    };
    for (const Row &row : rows) {
        const auto entry = ListText::md5Entry({QString::fromUtf8(row.line), {}});
        ASSERT_EQ(entry.has_value(), row.hash != nullptr) << row.line;
        if (entry) {
            EXPECT_EQ(entry->hash, QString::fromUtf8(row.hash)) << row.line;
            EXPECT_EQ(entry->name, QString::fromUtf8(row.name)) << row.line;
        }
    }
}

TEST(ListText, NamesFilesAsTheVerifierFindsThem)
{
    const auto name = [](const char *file, const char *folder, bool inOneFolder) {
        return ListText::nameInMd5List(QString::fromUtf8(file), QString::fromUtf8(folder), inOneFolder)
            .toStdString();
    };
    EXPECT_EQ(name("/a/b/y.wav", "/a", true), "y.wav");
    EXPECT_EQ(name("/a/x.wav", "/a", false), "x.wav");
    EXPECT_EQ(name("/a/b/y.wav", "/a", false), "/b/y.wav");
    EXPECT_EQ(name("/ab/y.wav", "/a", false), "y.wav") << "a folder whose name only begins alike";
    EXPECT_EQ(name("/c/y.wav", "/a", false), "y.wav");
    EXPECT_EQ(name("/b/y.wav", "/", false), "/b/y.wav");
    EXPECT_EQ(ListText::joined(u"/a"_s, u"/b/y.wav"_s), u"/a/b/y.wav"_s);
    EXPECT_EQ(ListText::joined(u"/"_s, u"y.wav"_s), u"/y.wav"_s);
}

TEST(ListText, EscapesOnlyNamesThatWouldBreakTheLine)
{
    for (const QString &name : {u"a\nb\\c.wav"_s, u"a\\nb.wav"_s, u"50% 1%2.wav"_s}) {
        const auto lines = ListText::lines(ListText::md5Line(u"0a"_s, name).toUtf8());
        ASSERT_EQ(lines.size(), 1) << name.toStdString();
        EXPECT_EQ(ListText::md5Entry(lines[0])->name, name);
    }
    EXPECT_EQ(ListText::md5Line(u"0a"_s, u"a\\b.wav"_s), u"0a *a\\b.wav\n"_s);
}

} // namespace
