// Jet-to-SQLite translation: the text is cut into tokens first, so quoted
// texts, bracketed names and date literals are whole tokens and nothing inside
// them can be mistaken for a keyword, an operator or the end of the statement.
#include "platform/JetSql.h"

#include "platform/VbError.h"

#include <QDate>
#include <QList>
#include <QRegularExpression>
#include <QTime>

namespace kelvary {

namespace {

[[noreturn]] void raiseSyntax(const QString& description) {
    throw VbError(vberr::SqlSyntax, description);
}

enum class Kind { Blank, Word, Literal, Symbol };

struct Token {
    Kind kind;
    QString text;  // already in SQLite form
    bool is(QChar symbol) const { return kind == Kind::Symbol && text == symbol; }
    bool isWord(const char* word) const {
        return kind == Kind::Word && text.compare(QLatin1String(word), Qt::CaseInsensitive) == 0;
    }
};

bool isWordChar(QChar c) { return c == QLatin1Char('_') || c.isLetterOrNumber(); }

// Jet reads y/m/d when the first number has three or four digits and the US
// order m/d/y otherwise, with two-digit years 00-29 in the 2000s.
QString dateLiteral(const QString& inner) {
    static const QRegularExpression pattern(QStringLiteral(
        "^\\s*(\\d{1,4})[/-](\\d{1,2})[/-](\\d{1,4})"
        "(?:\\s+(\\d{1,2}):(\\d{1,2})(?::(\\d{1,2}))?)?\\s*$"));
    const QRegularExpressionMatch m = pattern.match(inner);
    const QString shown = QLatin1Char('#') + inner + QLatin1Char('#');
    if (!m.hasMatch()) raiseSyntax(QStringLiteral("日付の構文エラーです: ") + shown);
    int year = 0, month = 0, day = 0;
    if (m.captured(1).size() >= 3) {
        year = m.captured(1).toInt();
        month = m.captured(2).toInt();
        day = m.captured(3).toInt();
        if (m.captured(3).size() > 2) raiseSyntax(QStringLiteral("日付の構文エラーです: ") + shown);
    } else {
        month = m.captured(1).toInt();
        day = m.captured(2).toInt();
        year = m.captured(3).toInt();
        if (m.captured(3).size() <= 2) year += year < 30 ? 2000 : 1900;
    }
    const QDate date(year, month, day);
    QTime time(0, 0);
    if (m.hasCaptured(4)) {
        time = QTime(m.captured(4).toInt(), m.captured(5).toInt(),
                     m.hasCaptured(6) ? m.captured(6).toInt() : 0);
    }
    if (!date.isValid() || !time.isValid())
        raiseSyntax(QStringLiteral("日付の構文エラーです: ") + shown);
    QString text = date.toString(QStringLiteral("yyyy-MM-dd"));
    if (time != QTime(0, 0)) text += QLatin1Char(' ') + time.toString(QStringLiteral("HH:mm:ss"));
    return QLatin1Char('\'') + text + QLatin1Char('\'');
}

// Index of the closing quote character, a doubled one standing for itself.
qsizetype closingQuote(const QString& sql, qsizetype open) {
    const QChar quote = sql[open];
    for (qsizetype j = open + 1; j < sql.size(); ++j) {
        if (sql[j] != quote) continue;
        if (j + 1 < sql.size() && sql[j + 1] == quote) {
            ++j;
            continue;
        }
        return j;
    }
    raiseSyntax(QStringLiteral("SQL 文の構文エラーです。閉じられていない引用符があります。"));
}

qsizetype closingChar(const QString& sql, qsizetype open, QChar close, const QString& problem) {
    const qsizetype j = sql.indexOf(close, open + 1);
    if (j < 0) raiseSyntax(problem);
    return j;
}

QList<Token> tokenize(const QString& sql) {
    QList<Token> tokens;
    qsizetype i = 0;
    while (i < sql.size()) {
        const QChar c = sql[i];
        qsizetype next = i + 1;
        if (c.isSpace()) {
            while (next < sql.size() && sql[next].isSpace()) ++next;
            tokens.append({Kind::Blank, sql.mid(i, next - i)});
        } else if (c == QLatin1Char('\'')) {
            next = closingQuote(sql, i) + 1;
            tokens.append({Kind::Literal, sql.mid(i, next - i)});
        } else if (c == QLatin1Char('"')) {
            next = closingQuote(sql, i) + 1;
            QString inner = sql.mid(i + 1, next - i - 2);
            inner.replace(QLatin1String("\"\""), QLatin1String("\""));
            inner.replace(QLatin1String("'"), QLatin1String("''"));
            tokens.append({Kind::Literal, QLatin1Char('\'') + inner + QLatin1Char('\'')});
        } else if (c == QLatin1Char('`')) {
            // SQLite quotes a name between backquotes; kept whole, so that
            // what stands inside is read neither here nor there as a quote,
            // a comment or the end of the statement.
            next = closingQuote(sql, i) + 1;
            tokens.append({Kind::Literal, sql.mid(i, next - i)});
        } else if (c == QLatin1Char('[')) {
            next = closingChar(sql, i, QLatin1Char(']'),
                               QStringLiteral("SQL 文の構文エラーです。[ ] が閉じられていません。")) + 1;
            tokens.append({Kind::Literal, sql.mid(i, next - i)});
        } else if (c == QLatin1Char('#')) {
            next = closingChar(sql, i, QLatin1Char('#'),
                               QStringLiteral("日付の構文エラーです: ") + sql.mid(i)) + 1;
            tokens.append({Kind::Literal, dateLiteral(sql.mid(i + 1, next - i - 2))});
        } else if (isWordChar(c)) {
            while (next < sql.size() && isWordChar(sql[next])) ++next;
            tokens.append({Kind::Word, sql.mid(i, next - i)});
        } else {
            tokens.append({Kind::Symbol, QString(c)});
        }
        i = next;
    }
    return tokens;
}

// Drops a closing ';' and the blanks after it; anything else after it is a
// second statement.
void cutAtStatementEnd(QList<Token>& tokens) {
    for (qsizetype i = 0; i < tokens.size(); ++i) {
        if (!tokens[i].is(QLatin1Char(';'))) continue;
        for (qsizetype j = i + 1; j < tokens.size(); ++j) {
            if (tokens[j].kind != Kind::Blank)
                raiseSyntax(QStringLiteral("SQL ステートメントの後に文字が見つかりました。"));
        }
        tokens.resize(i);
        return;
    }
}

qsizetype nextNonBlank(const QList<Token>& tokens, qsizetype from, qsizetype end) {
    while (from < end && tokens[from].kind == Kind::Blank) ++from;
    return from;
}

qsizetype previousNonBlank(const QList<Token>& tokens, qsizetype from, qsizetype begin) {
    while (from >= begin && tokens[from].kind == Kind::Blank) --from;
    return from;
}

qsizetype matchingParenthesis(const QList<Token>& tokens, qsizetype open, qsizetype end) {
    int depth = 0;
    for (qsizetype i = open; i < end; ++i) {
        if (tokens[i].is(QLatin1Char('('))) ++depth;
        if (tokens[i].is(QLatin1Char(')')) && --depth == 0) return i;
    }
    raiseSyntax(QStringLiteral("SQL 文の構文エラーです。かっこが閉じられていません。"));
}

void translate(const QList<Token>& tokens, qsizetype begin, qsizetype end, QString& out) {
    for (qsizetype i = begin; i < end; ++i) {
        const Token& t = tokens[i];
        const qsizetype before = previousNonBlank(tokens, i - 1, begin);
        const bool qualified = before >= begin && tokens[before].is(QLatin1Char('.'));
        if (t.isWord("IsNull") && !qualified) {
            const qsizetype open = nextNonBlank(tokens, i + 1, end);
            if (open < end && tokens[open].is(QLatin1Char('('))) {
                const qsizetype close = matchingParenthesis(tokens, open, end);
                out += QLatin1String("((");
                translate(tokens, open + 1, close, out);
                out += QLatin1String(") IS NULL)");
                i = close;
                continue;
            }
        }
        if (t.isWord("True") && !qualified) {
            out += QLatin1Char('1');
        } else if (t.isWord("False") && !qualified) {
            out += QLatin1Char('0');
        } else if (t.is(QLatin1Char('/'))) {
            // Jet divides as floating point even between integers. What comes
            // right after must not meet the '/' as "/*" (a '*', or the "*1.0/"
            // of a second '/'), which would open a comment in SQLite and hide
            // the rest of the statement.
            out += QLatin1String("*1.0/");
            if (i + 1 < end && (tokens[i + 1].is(QLatin1Char('*')) || tokens[i + 1].is(QLatin1Char('/'))))
                out += QLatin1Char(' ');
        } else if (t.is(QLatin1Char('&'))) {
            out += QLatin1String("||");
        } else if (t.is(QLatin1Char('-')) && i + 1 < end && tokens[i + 1].is(QLatin1Char('-'))) {
            out += QLatin1String("- ");
        } else {
            out += t.text;
        }
    }
}

}  // namespace

QString translateJetSql(const QString& jetSql) {
    QList<Token> tokens = tokenize(jetSql);
    cutAtStatementEnd(tokens);
    QString out;
    out.reserve(jetSql.size() + 16);
    translate(tokens, 0, tokens.size(), out);
    return out;
}

}  // namespace kelvary
