// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "textindex.h"

#include <algorithm>
#include <iterator>
#include <numeric>

QVector<int> TextIndex::holding(const QString &word) const
{
    if (word.isEmpty())
        return allTexts();
    QVector<int> texts = textsOf(rangeOf(word));
    if (word.size() > LettersCompared) {
        const auto lacksIt = [this, &word](int text) { return !_texts.at(text).contains(word); };
        texts.erase(std::remove_if(texts.begin(), texts.end(), lacksIt), texts.end());
    }
    return texts;
}

QVector<int> TextIndex::holdingRarest(const QStringList &words) const
{
    std::vector<Range> ranges;
    for (const QString &word : words) {
        if (!word.isEmpty())
            ranges.push_back(rangeOf(word));
    }
    const auto rarest = std::min_element(ranges.cbegin(), ranges.cend(), [](const Range &left, const Range &right) {
        return std::distance(left.first, left.second) < std::distance(right.first, right.second);
    });
    return rarest == ranges.cend() ? allTexts() : textsOf(*rarest);
}

QStringView TextIndex::following(const Place &place) const
{
    const QStringView rest = QStringView(_texts.at(place.text)).mid(place.at);
    return rest.left(std::min<qsizetype>(rest.size(), LettersCompared));
}

const TextIndex::Places &TextIndex::placesOf(QChar letter) const
{
    const auto [entry, isNew] = _places.try_emplace(letter);
    Places &places = entry->second;
    if (!isNew)
        return places;
    for (int text = 0; text < _texts.size(); ++text) {
        for (int at = -1; (at = _texts.at(text).indexOf(letter, at + 1)) >= 0;)
            places.push_back({text, at});
    }
    std::sort(places.begin(), places.end(),
              [this](const Place &left, const Place &right) { return following(left) < following(right); });
    return places;
}

TextIndex::Range TextIndex::rangeOf(const QString &word) const
{
    const Places &places = placesOf(word.at(0));
    const QStringView beginning = QStringView(word).left(std::min<qsizetype>(word.size(), LettersCompared));
    const auto begins = [this, beginning](const Place &place) { return following(place).left(beginning.size()); };
    const auto first =
        std::lower_bound(places.cbegin(), places.cend(), beginning,
                         [&begins](const Place &place, QStringView sought) { return begins(place) < sought; });
    const auto last =
        std::upper_bound(first, places.cend(), beginning,
                         [&begins](QStringView sought, const Place &place) { return sought < begins(place); });
    return {first, last};
}

/// A text can hold a word more than once.
QVector<int> TextIndex::textsOf(Range range) const
{
    QVector<int> texts;
    std::transform(range.first, range.second, std::back_inserter(texts), [](const Place &place) { return place.text; });
    std::sort(texts.begin(), texts.end());
    texts.erase(std::unique(texts.begin(), texts.end()), texts.end());
    return texts;
}

QVector<int> TextIndex::allTexts() const
{
    QVector<int> texts(_texts.size());
    std::iota(texts.begin(), texts.end(), 0);
    return texts;
}
