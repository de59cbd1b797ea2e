#include "platform/ado/providers/odbc/ConnectionString.h"

#include "platform/ado/ConnectionText.h"

#include <zephrin/ado/Error.h>

#include <QHash>
#include <QRegularExpression>

namespace zephrin::ado::odbc {

namespace {

/// "The format of the initialization string is wrong", as OLE DB numbers it.
constexpr int BadInitString = -2147217805;

[[noreturn]] void Refuse(const QString& why) {
    throw Error(BadInitString, QStringLiteral("The connection string is not well formed: %1.").arg(why),
                QStringLiteral("ODBC"));
}

bool NeedsBraces(const QString& value) {
    if (value.isEmpty()) return false;
    return value.front().isSpace() || value.back().isSpace() || value.contains(u';') ||
           value.contains(u'{') || value.contains(u'}');
}

QString Braced(QString value) {
    if (!NeedsBraces(value)) return value;
    return u'{' + value.replace(u'}', QStringLiteral("}}")) + u'}';
}

/// As FreeTDS reads it: to the first closing brace in front of a semicolon.
QString RawBraced(const QString& name, const QString& value) {
    if (value.contains(QLatin1StringView("};")))
        Refuse(QStringLiteral("the value of '%1' holds '};', for which its driver has no way of writing")
                   .arg(name));
    const bool plain = value.isEmpty() || (!value.front().isSpace() && !value.back().isSpace() &&
                                           !value.startsWith(u'{') && !value.contains(u';'));
    return plain ? value : u'{' + value + u'}';
}

}  // namespace

bool IsYes(const QString& value) {
    for (const char* word : {"yes", "true", "sspi", "1", "-1", "mandatory"})
        if (value.compare(QLatin1StringView(word), Qt::CaseInsensitive) == 0) return true;
    return false;
}

bool IsNo(const QString& value) {
    for (const char* word : {"", "no", "false", "optional", "0", "off", "disabled"})
        if (value.compare(QLatin1StringView(word), Qt::CaseInsensitive) == 0) return true;
    return false;
}

/// Cuts a connection string into its parts.
class StringReader {
 public:
    StringReader(const QString& source, bool quotesCount) : text(source), quotes(quotesCount) {}

    /// The next part; false at the end.
    bool Next(ConnectionString::Item& item) {
        while (at < text.size() && (text[at] == u';' || text[at].isSpace())) ++at;
        if (at >= text.size()) return false;
        const qsizetype begin = at;
        item.Name = ReadName();
        item.Value = ReadValue(item.Name);
        if (!quotes) item.Written = text.mid(begin, at - begin).trimmed();
        NoteName(item.Name);
        return true;
    }

 private:
    QString ReadName() {
        const qsizetype equals = text.indexOf(u'=', at);
        const qsizetype end = text.indexOf(u';', at);
        if (equals < 0 || (end >= 0 && end < equals))
            Refuse(previous.isEmpty() ? QStringLiteral("it begins with a part that has no '='")
                                      : QStringLiteral("a part without '=' follows %1").arg(previous));
        const QString name = text.mid(at, equals - at).trimmed();
        if (name.isEmpty()) Refuse(QStringLiteral("a value has no keyword in front of its '='"));
        at = equals + 1;
        return name;
    }

    QString ReadValue(const QString& name) {
        while (at < text.size() && text[at].isSpace()) ++at;
        if (at < text.size() && text[at] == u'{') return ReadEnclosed(name, u'}');
        if (quotes && at < text.size() && (text[at] == u'"' || text[at] == u'\''))
            return ReadEnclosed(name, text[at]);
        const qsizetype end = text.indexOf(u';', at);
        const QString value = text.mid(at, end < 0 ? -1 : end - at).trimmed();
        at = end < 0 ? text.size() : end;
        return value;
    }

    QString ReadEnclosed(const QString& name, QChar close) {
        const QChar open = text[at++];
        QString value;
        for (;; ++at) {
            if (at >= text.size())
                Refuse(QStringLiteral("the value of %1 begins with %2 and never closes it")
                           .arg(Told(name))
                           .arg(open));
            if (text[at] != close) {
                value += text[at];
            } else if (at + 1 < text.size() && text[at + 1] == close) {
                value += text[at++];
            } else {
                break;
            }
        }
        ++at;
        while (at < text.size() && text[at].isSpace()) ++at;
        if (at < text.size() && text[at] != u';')
            Refuse(
                QStringLiteral("the value of %1 goes on behind its closing %2").arg(Told(name)).arg(close));
        return value;
    }

    /// A keyword as a message may show it. What stands behind a password may be the rest of one that lacks
    /// its braces.
    QString Told(const QString& name) const {
        return behindSecret ? QStringLiteral("the password") : u'\'' + name + u'\'';
    }
    void NoteName(const QString& name) {
        previous = Told(name);
        if (!behindSecret && IsSecretName(name)) behindSecret = true;
    }

    const QString& text;
    const bool quotes;
    qsizetype at = 0;
    /// The keyword before, as a message may show it.
    QString previous;
    bool behindSecret = false;
};

ConnectionString ConnectionString::Parse(const QString& text) {
    static const QRegularExpression provider(QStringLiteral("(^|;)\\s*provider\\s*="),
                                             QRegularExpression::CaseInsensitiveOption);
    ConnectionString result;
    result.oleDb = provider.match(text).hasMatch();
    // A lone word is the name of a data source.
    if (const QString word = text.trimmed();
        !word.isEmpty() && !word.contains(u'=') && !word.contains(u';')) {
        result.Set(QStringLiteral("DSN"), word);
        return result;
    }
    StringReader reader(text, result.oleDb);
    for (Item item; reader.Next(item);) result.items.append(item);
    result.DropDuplicates();
    return result;
}

void ConnectionString::DropDuplicates() {
    QList<Item> kept;
    QHash<QString, qsizetype> places;
    for (const Item& item : std::as_const(items)) {
        const auto place = places.constFind(item.Name.toCaseFolded());
        if (place == places.constEnd()) {
            places.insert(item.Name.toCaseFolded(), kept.size());
            kept.append(item);
        } else if (oleDb) {
            kept[*place] = item;
        }
    }
    items = kept;
}

qsizetype ConnectionString::Find(QStringView name) const {
    for (qsizetype i = 0; i < items.size(); ++i)
        if (name.compare(items[i].Name, Qt::CaseInsensitive) == 0) return i;
    return -1;
}

QString ConnectionString::Value(QStringView name) const {
    const qsizetype at = Find(name);
    return at < 0 ? QString() : items[at].Value;
}

QString ConnectionString::FirstOf(std::initializer_list<QStringView> names) const {
    for (const QStringView name : names)
        if (Has(name)) return Value(name);
    return {};
}

void ConnectionString::Set(const QString& name, const QString& value) {
    const qsizetype at = Find(name);
    if (at < 0) {
        items.append({name, value, {}});
    } else {
        items[at].Value = value;
        items[at].Written.clear();
    }
}

void ConnectionString::Remove(QStringView name) {
    if (const qsizetype at = Find(name); at >= 0) items.removeAt(at);
}

std::optional<QString> ConnectionString::Take(QStringView name) {
    const qsizetype at = Find(name);
    if (at < 0) return std::nullopt;
    return items.takeAt(at).Value;
}

QList<QString> ConnectionString::Names() const {
    QList<QString> names;
    for (const Item& item : items) names.append(item.Name);
    return names;
}

QString ConnectionString::Text() const {
    QString text;
    for (const Item& item : items)
        text += (item.Written.isEmpty() ? item.Name + u'=' + Braced(item.Value) : item.Written) + u';';
    return text;
}

QString ConnectionString::TextWithRawBraces() const {
    QString text;
    for (const Item& item : items) {
        // The driver manager reads this one, by its own rules.
        const bool ofManager = item.Name.compare(QLatin1StringView("Driver"), Qt::CaseInsensitive) == 0;
        if (ofManager && !item.Written.isEmpty()) {
            text += item.Written + u';';
        } else {
            text +=
                item.Name + u'=' + (ofManager ? Braced(item.Value) : RawBraced(item.Name, item.Value)) + u';';
        }
    }
    return text;
}

}  // namespace zephrin::ado::odbc
