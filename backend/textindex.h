// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QChar>
#include <QString>
#include <QStringList>
#include <QVector>

#include <map>
#include <utility>
#include <vector>

/// Finds the texts that hold a word anywhere in them, without looking through all of them for each word.
///
/// What follows a letter in the texts is sorted when a word that begins with that letter is first asked for: what
/// begins with the word stands together then. Belongs to one thread.
class TextIndex
{
public:
    TextIndex() = default;
    explicit TextIndex(const QStringList &texts)
        : _texts(texts)
    {}

    const QString &at(int place) const { return _texts.at(place); }

    /// The places in the list of the texts that hold the word, in their order. All texts hold the empty word.
    QVector<int> holding(const QString &word) const;
    /// The same for that one of the words which is found least often: a text that holds all of them is among these.
    QVector<int> holdingRarest(const QStringList &words) const;

private:
    struct Place
    {
        int text;
        int at;
    };
    using Places = std::vector<Place>;
    using Range = std::pair<Places::const_iterator, Places::const_iterator>;

    /// So many letters are sorted by: a text of one letter over and over takes no longer than others.
    static constexpr int LettersCompared = 64;

    QStringView following(const Place &place) const;
    const Places &placesOf(QChar letter) const;
    Range rangeOf(const QString &word) const;
    QVector<int> textsOf(Range range) const;
    QVector<int> allTexts() const;

    QStringList _texts;
    mutable std::map<QChar, Places> _places;
};
