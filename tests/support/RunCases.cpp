// The player of the run case files.
#include "support/RunCases.h"

#include "platform/Cp932.h"
#include "platform/PdfCheck.h"
#include "support/ConnectedHome.h"
#include "support/Restricted.h"
#include "support/TestSupport.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLockFile>
#include <QRegularExpression>

#include <sqlite3.h>
#include <sys/stat.h>

#include <fcntl.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <optional>
#include <tuple>

namespace kelvary::test {

std::vector<RunCase> loadRunCases(const QString& folder) {
    std::vector<RunCase> cases;
    const QDir dir(folder);
    for (const QString& name : dir.entryList({QStringLiteral("*.cases")}, QDir::Files, QDir::Name)) {
        const QStringList lines = QString::fromUtf8(readFile(dir.filePath(name))).split(QLatin1Char('\n'));
        QList<std::pair<int, QString>> opening;
        RunCase* current = nullptr;
        for (int i = 0; i < lines.size(); ++i) {
            const QString line = lines[i].trimmed();
            if (line.isEmpty() || line.startsWith(QLatin1Char('#'))) continue;
            if (line.startsWith(QStringLiteral("case "))) {
                cases.push_back({QFileInfo(name).baseName() + QLatin1Char('_') + line.mid(5).trimmed(),
                                 QStringLiteral("tests/data/runs/") + name, opening});
                current = &cases.back();
                continue;
            }
            (current ? current->steps : opening).append({i + 1, line});
        }
    }
    return cases;
}

namespace {

// Holds a database file the way another program in the middle of writing
// does: an open exclusive transaction.
class SqliteHeld {
public:
    explicit SqliteHeld(const QString& path) {
        EXPECT_EQ(sqlite3_open_v2(QFile::encodeName(path).constData(), &db_, SQLITE_OPEN_READWRITE, nullptr), SQLITE_OK);
        EXPECT_EQ(sqlite3_exec(db_, "BEGIN EXCLUSIVE", nullptr, nullptr, nullptr), SQLITE_OK) << sqlite3_errmsg(db_);
    }
    ~SqliteHeld() {
        sqlite3_exec(db_, "ROLLBACK", nullptr, nullptr, nullptr);
        sqlite3_close(db_);
    }
    SqliteHeld(const SqliteHeld&) = delete;
    SqliteHeld& operator=(const SqliteHeld&) = delete;

private:
    sqlite3* db_ = nullptr;
};

// Holds a Jet file the way a program writing it does: a write lock over the file.
class JetHeld {
public:
    explicit JetHeld(const QString& path) : fd_(::open(QFile::encodeName(path).constData(), O_RDWR)) {
        EXPECT_GE(fd_, 0);
        struct flock lock {};
        lock.l_type = F_WRLCK;
        lock.l_whence = SEEK_SET;
        EXPECT_EQ(fcntl(fd_, F_SETLK, &lock), 0);
    }
    ~JetHeld() {
        if (fd_ >= 0) ::close(fd_);
    }
    JetHeld(const JetHeld&) = delete;
    JetHeld& operator=(const JetHeld&) = delete;

private:
    int fd_ = -1;
};

// "a ; b ; c" as its items; nothing as no items.
QStringList items(const QString& text) {
    return text.trimmed().isEmpty() ? QStringList() : text.split(QStringLiteral(" ; "));
}

// Words split at blanks; "…" keeps its blanks and "" is an empty word.
QStringList words(const QString& text) {
    QStringList out;
    QString word;
    bool quoted = false, started = false;
    for (const QChar c : text) {
        if (c == QLatin1Char('"')) {
            quoted = !quoted;
            started = true;
        } else if (c == QLatin1Char(' ') && !quoted) {
            if (started) out << word;
            word.clear();
            started = false;
        } else {
            word += c;
            started = true;
        }
    }
    if (started) out << word;
    return out;
}

// What zbar reads from the images of Temp whose names match, one after the other.
QByteArray decodedSymbols(const QString& temp, const QString& pattern) {
    QByteArray all;
    for (const QString& name : QDir(temp).entryList({pattern}, QDir::Files, QDir::Name))
        all += zbarDecode(QDir(temp).filePath(name));
    return all;
}

// Whether a word lies inside the box (millimetres), give or take the font's
// ascent above the glyphs that pdftotext counts in.
::testing::AssertionResult inside(const PdfWord& w, const QStringList& box) {
    const double slack = 1.0;
    const double left = mmToPt(box[0].toDouble()), top = mmToPt(box[1].toDouble());
    const double right = mmToPt(box[2].toDouble()), bottom = mmToPt(box[3].toDouble());
    if (w.xMin >= left - slack && w.xMax <= right + slack && w.yMin >= top - slack && w.yMax <= bottom + slack)
        return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure() << w.text.toStdString() << " at " << w.xMin << "," << w.yMin << "-" << w.xMax
                                         << "," << w.yMax << " pt, outside " << box.join(QLatin1Char(',')).toStdString()
                                         << " mm";
}

// "WORD" or "WORD#N": the first or the N-th word of exactly that text.
const PdfWord* wordNamed(const QList<PdfWord>& words, const QString& name) {
    static const QRegularExpression numbered(QStringLiteral("^(.*)#(\\d+)$"));
    const auto m = numbered.match(name);
    const QString text = m.hasMatch() ? m.captured(1) : name;
    int wanted = m.hasMatch() ? m.captured(2).toInt() : 1;
    for (const PdfWord& w : words)
        if (w.text == text && --wanted == 0) return &w;
    return nullptr;
}

class Player {
public:
    void step(const QString& line);
    void finish() {
        for (const auto& [name, bytes] : kept_) EXPECT_TRUE(readFile(path(name)) == bytes) << name.toStdString() << " changed";
    }

private:
    // {home}, {data}, {size:PATH} and {N*TEXT} replaced.
    QString expand(QString text) const;
    // A case's text with its escapes read (see unescaped); as bytes, its
    // characters in CP932 with \xHH as raw bytes.
    QString text(const QString& raw) const { return unescaped(expand(raw)); }
    QByteArray bytes(const QString& raw) const;
    QString path(const QString& raw) const {
        const QString p = expand(raw);
        return QDir::isAbsolutePath(p) ? p : home_.file(p);
    }
    void run(const QStringList& arguments);
    QString pdfPageHeading(const QString& page) const {
        for (const QString& heading : headings_)
            if (page.contains(heading)) return heading;
        return QStringLiteral("?");
    }

    ScratchHome home_;
    ProcessResult last_;
    std::map<QString, QByteArray> kept_;
    QStringList headings_;
    std::unique_ptr<QLockFile> lock_;
    // For the next run only.
    QString held_, jetHeld_, cwd_;
    std::map<QByteArray, QByteArray> env_;
    std::tuple<int, QString, QStringList> remembered_;
    QString rememberedQuery_;
    std::optional<std::pair<Right, QString>> without_;
    // A folder on a small disk of its own: folder, size, the one file on it
    // and that file's bytes; then what the disk held when the run ended.
    QStringList fullDisk_;
    FullDiskRun disk_;
};

QString Player::expand(QString text) const {
    static const QRegularExpression size(QStringLiteral("\\{size:([^}]*)\\}"));
    static const QRegularExpression repeat(QStringLiteral("\\{(\\d+)\\*([^}]*)\\}"));
    text.replace(QStringLiteral("{home}"), home_.path());
    text.replace(QStringLiteral("{data}"), testDataDir());
    for (auto m = size.match(text); m.hasMatch(); m = size.match(text))
        text.replace(m.capturedStart(), m.capturedLength(), QString::number(QFileInfo(path(m.captured(1))).size()));
    for (auto m = repeat.match(text); m.hasMatch(); m = repeat.match(text))
        text.replace(m.capturedStart(), m.capturedLength(), m.captured(2).repeated(m.captured(1).toInt()));
    return text;
}

QByteArray Player::bytes(const QString& raw) const {
    // Runs of text between the \xHH escapes, each in CP932.
    static const QRegularExpression byte(QStringLiteral("\\\\x([0-9A-Fa-f]{2})"));
    const QString t = expand(raw);
    QByteArray out;
    qsizetype from = 0;
    for (auto it = byte.globalMatch(t); it.hasNext();) {
        const auto m = it.next();
        out += cp932Encode(unescaped(t.mid(from, m.capturedStart() - from)));
        out += char(m.captured(1).toInt(nullptr, 16));
        from = m.capturedEnd();
    }
    return out + cp932Encode(unescaped(t.mid(from)));
}

void Player::run(const QStringList& arguments) {
    std::unique_ptr<SqliteHeld> held;
    std::unique_ptr<JetHeld> jetHeld;
    if (!held_.isEmpty()) held = std::make_unique<SqliteHeld>(path(held_));
    if (!jetHeld_.isEmpty()) jetHeld = std::make_unique<JetHeld>(path(jetHeld_));
    // The variables of `env`, only while the program runs.
    std::map<QByteArray, std::optional<QByteArray>> before;
    for (const auto& [name, value] : env_) {
        before[name] = qEnvironmentVariableIsSet(name.constData()) ? std::optional(qgetenv(name.constData())) : std::nullopt;
        qputenv(name.constData(), value);
    }
    if (!fullDisk_.isEmpty()) {
        disk_ = runKelvaryOnFullDisk(path(fullDisk_[0]), fullDisk_[1].toInt(), fullDisk_[2], bytes(fullDisk_.value(3)),
                                     arguments);
        last_ = disk_.process;
    } else if (without_) {
        last_ = runKelvaryWithout(without_->first, path(without_->second), home_.path(), arguments);
    } else {
        last_ = runKelvary(arguments, 60000, cwd_.isEmpty() ? QString() : path(cwd_));
    }
    for (const auto& [name, value] : before) {
        if (value) qputenv(name.constData(), *value);
        else qunsetenv(name.constData());
    }
    env_.clear();
    held_.clear();
    jetHeld_.clear();
    cwd_.clear();
    without_.reset();
    fullDisk_.clear();
}

void Player::step(const QString& line) {
    const QString verb = line.section(QLatin1Char(' '), 0, 0);
    const QString rest = line.section(QLatin1Char(' '), 1);
    // The first word of the rest, and what follows it.
    const QString first = rest.section(QLatin1Char(' '), 0, 0);
    const QString second = rest.section(QLatin1Char(' '), 1);
    // "left => right" around the first arrow.
    const qsizetype arrow = rest.indexOf(QStringLiteral(" =>"));
    const QString left = arrow < 0 ? rest : rest.left(arrow);
    const QString right = arrow < 0 ? QString() : rest.mid(arrow + 3).trimmed();
    const QString stderrText = last_.standardError;

    // Preparing the program folder.
    if (verb == QLatin1String("good-run")) {
        // A good run first: the settings then hold this application's user
        // details, and the PDF it leaves is the user's earlier one.
        run({QStringLiteral("--batch"), QStringLiteral("--home"), home_.path(), QStringLiteral("--mode"), QStringLiteral("3"),
             QStringLiteral("--periods"), QStringLiteral("all"), QStringLiteral("--pdf"), path(QStringLiteral("out.pdf")),
             path(QStringLiteral("sample/app.dat"))});
        ASSERT_EQ(last_.exitCode, 0) << last_.standardError.toStdString();
        ASSERT_TRUE(readFile(path(QStringLiteral("out.pdf"))).startsWith("%PDF-"));
        QFile::remove(path(QStringLiteral("Temp/kelvary.log")));
    } else if (verb == QLatin1String("copy")) {
        QFile::remove(path(second));
        ASSERT_TRUE(QFile::copy(path(first), path(second))) << line.toStdString();
    } else if (verb == QLatin1String("write")) {
        writeFile(path(first), bytes(second));
    } else if (verb == QLatin1String("append")) {
        writeFile(path(first), readFile(path(first)) + bytes(second));
    } else if (verb == QLatin1String("edit")) {
        const QString file = left.section(QLatin1Char(' '), 0, 0);
        QByteArray content = readFile(path(file));
        const QByteArray from = bytes(left.section(QLatin1Char(' '), 1));
        const qsizetype at = content.indexOf(from);
        ASSERT_GE(at, 0) << from.toStdString() << " not in " << file.toStdString();
        writeFile(path(file), content.replace(at, from.size(), bytes(right)));
    } else if (verb == QLatin1String("set-record")) {
        // The value of the record "KEY", of an application file, made TEXT.
        const QString file = first;
        const QString key = second.section(QLatin1Char(' '), 0, 0);
        QByteArray content = readFile(path(file));
        const QByteArray opening = "\n\"" + key.toLatin1() + "\",";
        const qsizetype at = content.indexOf(opening);
        ASSERT_GE(at, 0) << line.toStdString();
        const qsizetype start = at + opening.size();
        content.replace(start, content.indexOf(',', start) - start, '"' + bytes(second.section(QLatin1Char(' '), 1)) + '"');
        writeFile(path(file), content);
    } else if (verb == QLatin1String("remove-line")) {
        QByteArray content = readFile(path(first));
        const qsizetype at = content.indexOf(bytes(second));
        ASSERT_GE(at, 0) << line.toStdString();
        writeFile(path(first), content.remove(at, content.indexOf('\n', at) - at + 1));
    } else if (verb == QLatin1String("remove-ending")) {
        QByteArray content = readFile(path(first));
        ASSERT_TRUE(content.endsWith(bytes(second))) << line.toStdString();
        writeFile(path(first), content.left(content.size() - bytes(second).size()));
    } else if (verb == QLatin1String("cut")) {
        // The first half, or up to the last `mark` before `next`.
        const QByteArray whole = readFile(path(first));
        ASSERT_GT(whole.size(), 0) << line.toStdString();
        if (second.isEmpty()) {
            writeFile(path(first), whole.left(whole.size() / 2));
        } else {
            const qsizetype next = whole.indexOf(bytes(second.section(QLatin1Char(' '), 1)));
            ASSERT_GT(next, 0) << line.toStdString();
            writeFile(path(first), whole.left(whole.lastIndexOf(bytes(second.section(QLatin1Char(' '), 0, 0)), next) + 1));
        }
    } else if (verb == QLatin1String("remove")) {
        const QFileInfo info(path(rest));
        ASSERT_TRUE(info.isDir() && !info.isSymLink() ? QDir(path(rest)).removeRecursively() : QFile::remove(path(rest)))
            << line.toStdString();
    } else if (verb == QLatin1String("mkdir")) {
        ASSERT_TRUE(QDir().mkpath(path(rest)));
    } else if (verb == QLatin1String("fifo")) {
        ASSERT_EQ(::mkfifo(QFile::encodeName(path(rest)).constData(), 0600), 0);
    } else if (verb == QLatin1String("link")) {
        ASSERT_TRUE(QFile::link(path(first), path(second))) << line.toStdString();
    } else if (verb == QLatin1String("sql")) {
        sqlExec(path(first), expand(second));
    } else if (verb == QLatin1String("sql-file")) {
        sqlExec(path(first), QString::fromUtf8(readFile(testDataDir() + QLatin1Char('/') + second)));
    } else if (verb == QLatin1String("half-written")) {
        // The database and its journal as a program writing it leaves them
        // when it stops: a cache of two pages spills the update into the file.
        const QString target = path(first), writing = target + QStringLiteral(".writing");
        ASSERT_TRUE(QFile::copy(target, writing) && QFile::remove(target));
        sqlite3* db = nullptr;
        ASSERT_EQ(sqlite3_open(QFile::encodeName(writing).constData(), &db), SQLITE_OK);
        const QByteArray sql = "PRAGMA journal_mode=DELETE; PRAGMA cache_size=2; BEGIN; " + second.toUtf8();
        EXPECT_EQ(sqlite3_exec(db, sql.constData(), nullptr, nullptr, nullptr), SQLITE_OK) << sqlite3_errmsg(db);
        EXPECT_TRUE(QFile::copy(writing, target));
        EXPECT_TRUE(QFile::copy(writing + QStringLiteral("-journal"), target + QStringLiteral("-journal")));
        sqlite3_exec(db, "ROLLBACK", nullptr, nullptr, nullptr);
        sqlite3_close(db);
    } else if (verb == QLatin1String("lock")) {
        lock_ = std::make_unique<QLockFile>(path(rest));
        ASSERT_TRUE(lock_->tryLock(0));
    } else if (verb == QLatin1String("keep")) {
        for (const QString& name : rest.split(QLatin1Char(' '), Qt::SkipEmptyParts)) {
            kept_[name] = readFile(path(name));
            ASSERT_FALSE(kept_[name].isEmpty()) << name.toStdString();
        }
    } else if (verb == QLatin1String("headings")) {
        headings_ = items(rest);
    // What the next run meets.
    } else if (verb == QLatin1String("held")) {
        held_ = rest;
    } else if (verb == QLatin1String("jet-held")) {
        jetHeld_ = rest;
    } else if (verb == QLatin1String("env")) {
        env_[rest.section(QLatin1Char('='), 0, 0).toUtf8()] = expand(rest.section(QLatin1Char('='), 1)).toUtf8();
    } else if (verb == QLatin1String("cwd")) {
        cwd_ = rest;
    } else if (verb == QLatin1String("without-write") || verb == QLatin1String("without-read")) {
        const QString why = restrictedRunUnavailable();
        if (!why.isEmpty()) GTEST_SKIP() << why.toStdString();
        without_ = {verb == QLatin1String("without-write") ? Right::Write : Right::Read, rest};
    } else if (verb == QLatin1String("full-disk")) {
        const QString why = fullDiskRunUnavailable();
        if (!why.isEmpty()) GTEST_SKIP() << why.toStdString();
        fullDisk_ = words(rest);
    } else if (verb == QLatin1String("run") || verb == QLatin1String("run-raw")) {
        QStringList arguments = words(expand(rest));
        if (verb == QLatin1String("run")) arguments = QStringList{QStringLiteral("--batch"), QStringLiteral("--home"), home_.path()} + arguments;
        run(arguments);
    // Judging the run.
    } else if (verb == QLatin1String("exit")) {
        EXPECT_EQ(last_.exitCode, rest.toInt()) << stderrText.toStdString();
    } else if (verb == QLatin1String("stderr-has") || verb == QLatin1String("stderr-lacks")) {
        EXPECT_EQ(stderrText.contains(text(rest)), verb == QLatin1String("stderr-has")) << stderrText.toStdString();
    } else if (verb == QLatin1String("stderr-starts")) {
        EXPECT_TRUE(stderrText.startsWith(text(rest))) << stderrText.toStdString();
    } else if (verb == QLatin1String("stderr-is")) {
        EXPECT_EQ(stderrText, text(rest));
    } else if (verb == QLatin1String("stderr-count")) {
        EXPECT_EQ(stderrText.count(text(second)), first.toInt()) << stderrText.toStdString();
    } else if (verb == QLatin1String("stderr-lines")) {
        // The lines that start with the text, in their order.
        QStringList lines;
        for (const QString& l : stderrText.split(QLatin1Char('\n')))
            if (l.startsWith(text(left))) lines << l;
        EXPECT_EQ(lines, items(right));
    } else if (verb == QLatin1String("stdout-lines")) {
        // Each of these is a whole line of standard output.
        const QStringList lines = last_.standardOutput.split(QLatin1Char('\n'));
        for (const QString& item : items(rest)) EXPECT_TRUE(lines.contains(item)) << item.toStdString() << "\n" << last_.standardOutput.toStdString();
    } else if (verb == QLatin1String("remember")) {
        // The run's answer and a query's rows, for a later run to match.
        remembered_ = {last_.exitCode, stderrText, sqlRows(path(first), expand(second))};
        rememberedQuery_ = rest;
    } else if (verb == QLatin1String("same-as-remembered")) {
        ASSERT_FALSE(rememberedQuery_.isEmpty()) << "nothing remembered";
        EXPECT_EQ(last_.exitCode, std::get<0>(remembered_));
        EXPECT_EQ(stderrText, std::get<1>(remembered_));
        EXPECT_EQ(sqlRows(path(rememberedQuery_.section(QLatin1Char(' '), 0, 0)),
                          expand(rememberedQuery_.section(QLatin1Char(' '), 1))),
                  std::get<2>(remembered_));
    } else if (verb == QLatin1String("reports")) {
        // N, or MIN-MAX.
        const qsizetype reports = stderrText.count(QStringLiteral("=== 3 "));
        EXPECT_GE(reports, rest.section(QLatin1Char('-'), 0, 0).toInt()) << stderrText.toStdString();
        EXPECT_LE(reports, rest.section(QLatin1Char('-'), -1).toInt()) << stderrText.toStdString();
    } else if (verb == QLatin1String("disk-files")) {
        EXPECT_EQ(disk_.filesLeft, items(rest));
    } else if (verb == QLatin1String("disk-file-is")) {
        EXPECT_EQ(disk_.fileLeft, bytes(rest));
    } else if (verb == QLatin1String("disk-whole-symbols")) {
        // Images, each payload copy beside its image, and the log: no piece of a file.
        ASSERT_FALSE(disk_.filesLeft.isEmpty());
        for (const QString& name : disk_.filesLeft)
            EXPECT_TRUE(name == QLatin1String("kelvary.log") || name.endsWith(QLatin1String(".bmp")) ||
                        (name.endsWith(QLatin1String(".bmp.Txt")) && disk_.filesLeft.contains(name.chopped(4))))
                << name.toStdString();
    } else if (verb == QLatin1String("boxes")) {
        EXPECT_EQ(stderrText.count(QStringLiteral("=== ")), rest.toInt()) << stderrText.toStdString();
    } else if (verb == QLatin1String("reported")) {
        // On standard error (the batch form of the box) and in the log.
        EXPECT_TRUE(stderrText.contains(text(rest))) << stderrText.toStdString();
        EXPECT_TRUE(QString::fromUtf8(readFile(path(QStringLiteral("Temp/kelvary.log")))).contains(text(rest)));
    } else if (verb == QLatin1String("rows")) {
        EXPECT_EQ(sqlRows(path(first), expand(left.section(QLatin1Char(' '), 1))), items(right));
    } else if (verb == QLatin1String("exists") || verb == QLatin1String("missing")) {
        EXPECT_EQ(QFileInfo::exists(path(rest)), verb == QLatin1String("exists")) << rest.toStdString();
    } else if (verb == QLatin1String("is-pdf")) {
        EXPECT_TRUE(readFile(path(rest)).startsWith("%PDF-")) << rest.toStdString();
    } else if (verb == QLatin1String("file-is")) {
        EXPECT_EQ(readFile(path(first)), bytes(second));
    } else if (verb == QLatin1String("file-has") || verb == QLatin1String("file-lacks")) {
        EXPECT_EQ(readFile(path(first)).contains(bytes(second)), verb == QLatin1String("file-has")) << readFile(path(first)).toStdString();
    } else if (verb == QLatin1String("file-starts")) {
        EXPECT_TRUE(readFile(path(first)).startsWith(bytes(second))) << readFile(path(first)).toStdString();
    } else if (verb == QLatin1String("is-fifo")) {
        struct stat info {};
        EXPECT_TRUE(::lstat(QFile::encodeName(path(rest)).constData(), &info) == 0 && S_ISFIFO(info.st_mode)) << rest.toStdString();
    } else if (verb == QLatin1String("files")) {
        const QString pattern = left.section(QLatin1Char(' '), 1);
        EXPECT_EQ(QDir(path(first)).entryList({pattern}, QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot, QDir::Name),
                  items(right));
    } else if (verb == QLatin1String("pdf-pages")) {
        EXPECT_EQ(pdfInfo(path(first), QStringLiteral("Pages")), second);
    } else if (verb == QLatin1String("pdf-headings")) {
        QStringList pages;
        for (const QString& page : pdfText(path(first)).split(QLatin1Char('\f'), Qt::SkipEmptyParts))
            pages << pdfPageHeading(page);
        EXPECT_EQ(pages, items(second));
    } else if (verb == QLatin1String("pdf-has") || verb == QLatin1String("pdf-lacks")) {
        EXPECT_EQ(pdfText(path(first)).contains(text(second)), verb == QLatin1String("pdf-has"))
            << pdfText(path(first)).toStdString();
    } else if (verb == QLatin1String("pdf-matches")) {
        EXPECT_TRUE(pdfText(path(first)).contains(QRegularExpression(second))) << pdfText(path(first)).toStdString();
    } else if (verb == QLatin1String("pdf-page-has") || verb == QLatin1String("pdf-page-lacks")) {
        const QString page = pdfText(path(first), second.section(QLatin1Char(' '), 0, 0).toInt());
        EXPECT_EQ(page.contains(text(second.section(QLatin1Char(' '), 1))), verb == QLatin1String("pdf-page-has"))
            << page.toStdString();
    } else if (verb.startsWith(QLatin1String("pdf-word"))) {
        // PDF PAGE, then for the words in a box LEFT TOP RIGHT BOTTOM (mm) and
        // what: every word (pdf-words-in), the lines of a long text, its
        // words of eight characters or more (pdf-word-pieces-in), or one word
        // (pdf-word-in); or two words on one line (pdf-words-level A ; B).
        const QStringList args = second.split(QLatin1Char(' '));
        const QList<PdfWord> words = pdfWords(path(first), args[0].toInt());
        ASSERT_FALSE(words.isEmpty()) << line.toStdString();
        const QString what = text(args.mid(5).join(QLatin1Char(' ')));
        if (verb == QLatin1String("pdf-words-level")) {
            const QStringList pair = items(args.mid(1).join(QLatin1Char(' ')));
            const PdfWord* a = wordNamed(words, pair.value(0));
            const PdfWord* b = wordNamed(words, pair.value(1));
            ASSERT_TRUE(a && b) << pdfText(path(first), args[0].toInt()).toStdString();
            EXPECT_NEAR(a->yMin, b->yMin, 0.5);
        } else if (verb == QLatin1String("pdf-words-in")) {
            for (const PdfWord& w : words) EXPECT_TRUE(inside(w, args.mid(1, 4)));
        } else if (verb == QLatin1String("pdf-word-in")) {
            const PdfWord* w = wordNamed(words, what);
            ASSERT_TRUE(w) << pdfText(path(first), args[0].toInt()).toStdString();
            EXPECT_TRUE(inside(*w, args.mid(1, 4)));
        } else if (verb == QLatin1String("pdf-word-pieces-in")) {
            int found = 0;
            for (const PdfWord& w : words)
                if (w.text.size() >= 8 && what.contains(w.text) && ++found) EXPECT_TRUE(inside(w, args.mid(1, 4)));
            EXPECT_GT(found, 0) << line.toStdString();
        } else {
            ADD_FAILURE() << "unknown step: " << line.toStdString();
        }
    } else if (verb == QLatin1String("pdf-sound")) {
        EXPECT_EQ(qpdfCheck(path(rest)), 0) << rest.toStdString();
    } else if (verb == QLatin1String("pdf-pages-have")) {
        const int pages = pdfInfo(path(first), QStringLiteral("Pages")).toInt();
        EXPECT_GT(pages, 0) << line.toStdString();
        for (int page = 1; page <= pages; ++page)
            EXPECT_TRUE(pdfText(path(first), page).contains(text(second))) << "page " << page;
    } else if (verb == QLatin1String("pdf-symbols-are-payloads")) {
        // zbar reads every payload copy of Temp off the pages at 200 dpi, and nothing else.
        QByteArray read;
        for (int page = 1; page <= pdfInfo(path(rest), QStringLiteral("Pages")).toInt(); ++page) {
            QTemporaryDir dir;
            read += zbarDecode(renderedPage(path(rest), page, dir.filePath(QStringLiteral("page"))));
        }
        const QDir temp(path(QStringLiteral("Temp")));
        qsizetype total = 0;
        for (const QString& name : temp.entryList({QStringLiteral("*.bmp.Txt")}, QDir::Files)) {
            const QByteArray copy = readFile(temp.filePath(name));
            EXPECT_TRUE(read.contains(copy)) << name.toStdString();
            total += copy.size();
        }
        EXPECT_GT(total, 0);
        EXPECT_EQ(read.size(), total);
    } else if (verb == QLatin1String("pdf-same-text")) {
        // The document ID carries the start time of its run; everything else matches.
        static const QRegularExpression id(QStringLiteral("\\[ID\\]\\d+"));
        EXPECT_EQ(pdfText(path(first)).replace(id, QStringLiteral("[ID]")), pdfText(path(second)).replace(id, QStringLiteral("[ID]")));
    } else if (verb == QLatin1String("symbols-read-back")) {
        // Every image in Temp with its payload copy beside it, reading back as that copy.
        const QDir temp(path(QStringLiteral("Temp")));
        const QStringList images = temp.entryList({QStringLiteral("*.bmp")}, QDir::Files, QDir::Name);
        EXPECT_EQ(temp.entryList({QStringLiteral("*.Txt")}, QDir::Files).size(), images.size());
        for (const QString& image : images)
            EXPECT_EQ(zbarDecode(temp.filePath(image)), readFile(temp.filePath(image + QStringLiteral(".Txt")))) << image.toStdString();
    } else if (verb == QLatin1String("symbols-have")) {
        const QByteArray read = decodedSymbols(path(QStringLiteral("Temp")), first);
        EXPECT_TRUE(read.contains(bytes(second))) << read.toHex(' ').toStdString();
    } else if (verb == QLatin1String("payloads-have") || verb == QLatin1String("payloads-lack")) {
        // Every payload copy in Temp, read as the CP932 the symbols carry.
        QString all;
        const QDir temp(path(QStringLiteral("Temp")));
        for (const QString& name : temp.entryList({QStringLiteral("*.Txt")}, QDir::Files, QDir::Name))
            all += cp932Decode(readFile(temp.filePath(name)));
        EXPECT_EQ(all.contains(text(rest)), verb == QLatin1String("payloads-have")) << rest.toStdString();
    } else {
        ADD_FAILURE() << "unknown step: " << line.toStdString();
    }
}

}  // namespace

void playRunCase(const RunCase& c) {
    Player player;
    const std::string file = c.file.toStdString();
    for (const auto& [line, step] : c.steps) {
        const ::testing::ScopedTrace trace(file.c_str(), line, step.toStdString());
        player.step(step);
        if (::testing::Test::HasFatalFailure() || ::testing::Test::IsSkipped()) return;
    }
    player.finish();
}

}  // namespace kelvary::test
