#include "platform/ado/EqualTexts.h"
#include "platform/ado/TextOrder.h"

#include <QRandomGenerator>
#include <QString>

#include <gtest/gtest.h>
#include <set>
#include <string>
#include <thread>

namespace zephrin::ado {
namespace {

int Sign(int value) {
    return (value > 0) - (value < 0);
}

std::string KeyOf(TextKeyWriter& writer, const std::string& text) {
    std::vector<char> key;
    writer.Append(text, key);
    return std::string(key.begin(), key.end());
}

TEST(TextOrder, AsAServersDefault) {
    const struct {
        const char* Left;
        const char* Right;
        int Sign;
    } cases[] = {
        {"a", "A", 0},
        {"a ", "a", 0},
        {"", "  ", 0},
        {"é", "É", 0},
        {"aé", "AÉ ", 0},
        {"e\u0301", "É", 0},
        {"a", "b", -1},
        {"B", "a", 1},
        {"ab", "a", 1},
        {"é", "e", 1},
        {"é", "f", -1},
        {"Émile", "Francis", -1},
        {"Éa", "eb", -1},
        {"resume", "résumé", -1},
        {"résumé", "resumes", -1},
        {"z", "é", 1},
        {"_", "a", -1},
        {"[old]", "1", -1},
        {"_", "1", -1},
        {"9", "a", -1},
        {"a", " a", 1},
        {"a b", "ab", -1},
        {"a\tb", "a b", -1},
        {"Ö", "o", 1},
        {"Ö", "P", -1},
        {"z", "я", -1},
        {"я", "Я", 0},
        {"и", "й", -1},
        {"日", "z", 1},
        {"a\u0301", "a", 1},
        {"l\u00B7a", "lb", -1},
        {"\uFF21", "a", 0},
        {"a\x01", "a", 0},
        {"😀", "a", -1},
        {"a\xFF", "a", 1},
    };
    TextKeyWriter writer;
    for (const auto& row : cases) {
        EXPECT_EQ(Sign(CompareTexts(row.Left, row.Right)), row.Sign) << row.Left << " and " << row.Right;
        EXPECT_EQ(Sign(CompareTexts(row.Right, row.Left)), -row.Sign) << row.Right << " and " << row.Left;
        EXPECT_EQ(Sign(KeyOf(writer, row.Left).compare(KeyOf(writer, row.Right))), row.Sign)
            << "keys of " << row.Left << " and " << row.Right;
    }
}

/// The table for ASCII, the library and the keys are three ways to one order, on several threads at once.
TEST(TextOrder, KeysAgreeWithComparisons) {
    static const QString characters = QString::fromUtf8(
        "aAbBeElLzZ019 .-_'\"[](\t\x01\u00B7\u00E9\u00C9\u0301\u0308ßæøÅжйи\u0306日本가😀ﬁＡ");
    const auto check = [](quint32 seed) {
        QRandomGenerator random(seed);
        TextKeyWriter writer;
        const auto text = [&] {
            QString made;
            for (int left = random.bounded(6); left > 0; --left)
                made += characters[random.bounded(int(characters.size()))];
            return made.toStdString();
        };
        for (int round = 0; round < 30'000; ++round) {
            const std::string a = text();
            const std::string b = random.bounded(2) ? a + text() : text();
            ASSERT_EQ(Sign(CompareTexts(a, b)), Sign(KeyOf(writer, a).compare(KeyOf(writer, b))))
                << a << " and " << b;
        }
    };
    std::thread other(check, 1);
    check(2);
    other.join();
}

/// The walk through texts in the order of their bytes finds all that are equal, whatever lies between.
TEST(TextOrder, EqualTextsAreFoundAmongOthers) {
    const QString alphabets[] = {
        QString::fromUtf8("aAbB l"),
        QString::fromUtf8("aAeElL \x01\u00B7\u00E9\u0301\u0308ßæＡa"),
        QString::fromUtf8("иИйЙ\u0306ж a"),
        QString::fromUtf8("เกขaA\u0E48 "),
        QString::fromUtf8("カか\u30FCーｶ日本本"),
    };
    QRandomGenerator random(7);
    for (int round = 0; round < 600; ++round) {
        const QString& characters = alphabets[round % 5];
        const auto text = [&] {
            QString made;
            for (int left = random.bounded(5); left > 0; --left)
                made += characters[random.bounded(int(characters.size()))];
            return made.toStdString();
        };
        std::set<std::string> texts{"a\xFF", std::string("a\0b", 3)};
        for (int count = random.bounded(1, 200); count > 0; --count) texts.insert(text());
        const std::string wanted =
            random.bounded(4) ? *std::next(texts.begin(), random.bounded(int(texts.size()))) : text();
        const EqualTexts search(wanted);
        if (!search.CanSearch()) continue;
        std::vector<std::string> found;
        for (auto at = texts.begin(); at != texts.end();) {
            if (CompareTexts(*at, wanted) == 0) found.push_back(*at);
            const std::optional<std::string> behind = search.Behind(*at);
            if (!behind) break;
            ASSERT_GT(*behind, *at);
            at = texts.lower_bound(*behind);
        }
        std::vector<std::string> equal;
        std::copy_if(texts.begin(), texts.end(), std::back_inserter(equal),
                     [&](const std::string& other) { return CompareTexts(other, wanted) == 0; });
        EXPECT_EQ(found, equal) << "looking for " << wanted;
    }
    // Far fewer are looked at than there are.
    std::set<std::string> names;
    for (int index = 0; index < 20'000; ++index)
        names.insert("Customer " + std::to_string(index * 7919 % 100'003));
    names.insert({"CUSTOMER 31676", "customer 31676  ", "zebra"});
    const EqualTexts search("Customer 31676");
    int steps = 0;
    int hits = 0;
    for (auto at = names.begin(); at != names.end(); ++steps) {
        hits += CompareTexts(*at, "Customer 31676") == 0;
        const std::optional<std::string> behind = search.Behind(*at);
        if (!behind) break;
        at = names.lower_bound(*behind);
    }
    EXPECT_EQ(hits, 3);
    EXPECT_LT(steps, 60);
}

}  // namespace
}  // namespace zephrin::ado
