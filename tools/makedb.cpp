// makedb: builds one SQLite database file from SQL text files, in the order
// given. The build runs it to produce the databases of the program folder
// from data/, so no binary database is ever committed.
//
//   makedb OUTPUT.mdb FILE.sql [FILE.sql ...]
//
// The database is written under a temporary name and renamed over OUTPUT only
// when every statement succeeded, so a failed build never leaves a half-made
// database that a later build would take as up to date. Any SQL error names
// the file and line of the failing statement and fails the build.
#include <sqlite3.h>

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;

struct CloseDatabase {
    void operator()(sqlite3* db) const { sqlite3_close(db); }
};
using Database = std::unique_ptr<sqlite3, CloseDatabase>;

struct FinalizeStatement {
    void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
};
using Statement = std::unique_ptr<sqlite3_stmt, FinalizeStatement>;

std::string readFile(const fs::path& path) {
    std::ifstream in(path, std::ios::binary);
    if (!in) throw std::runtime_error(path.string() + ": cannot be read");
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

int lineOf(const std::string& text, const char* position) {
    return 1 + static_cast<int>(std::count(text.data(), position, '\n'));
}

// Runs every statement of one file; the first failure throws with its place.
void runFile(sqlite3* db, const fs::path& path) {
    const std::string text = readFile(path);
    const char* next = text.c_str();
    while (*next != '\0') {
        const char* start = next;
        sqlite3_stmt* raw = nullptr;
        const int prepared = sqlite3_prepare_v2(db, start, -1, &raw, &next);
        Statement statement(raw);
        if (prepared != SQLITE_OK) {
            // The error may lie anywhere in the statement; name where it starts.
            while (start < next && std::isspace(static_cast<unsigned char>(*start))) ++start;
            std::ostringstream message;
            message << path.string() << ":" << lineOf(text, start) << ": " << sqlite3_errmsg(db);
            throw std::runtime_error(message.str());
        }
        if (!statement) continue;  // only blanks or comments were left
        int stepped;
        while ((stepped = sqlite3_step(statement.get())) == SQLITE_ROW) {
        }
        if (stepped != SQLITE_DONE) {
            std::ostringstream message;
            message << path.string() << ":" << lineOf(text, start) << ": " << sqlite3_errmsg(db);
            throw std::runtime_error(message.str());
        }
    }
}

void exec(sqlite3* db, const char* sql) {
    char* error = nullptr;
    if (sqlite3_exec(db, sql, nullptr, nullptr, &error) != SQLITE_OK) {
        std::string message = error ? error : "unknown error";
        sqlite3_free(error);
        throw std::runtime_error(message);
    }
}

void build(const fs::path& output, const std::vector<fs::path>& sources) {
    fs::path temporary = output;
    temporary += ".part";
    fs::remove(temporary);
    if (!output.parent_path().empty()) fs::create_directories(output.parent_path());

    {
        sqlite3* raw = nullptr;
        const int opened = sqlite3_open_v2(temporary.string().c_str(), &raw,
                                           SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE, nullptr);
        Database db(raw);
        if (opened != SQLITE_OK) {
            throw std::runtime_error(temporary.string() + ": " +
                                     (raw ? sqlite3_errmsg(raw) : "cannot be created"));
        }
        // One transaction: thousands of INSERTs would otherwise each sync.
        exec(db.get(), "BEGIN");
        for (const auto& source : sources) runFile(db.get(), source);
        exec(db.get(), "COMMIT");
    }
    fs::rename(temporary, output);
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 3) {
        std::fprintf(stderr, "usage: makedb OUTPUT FILE.sql [FILE.sql ...]\n");
        return 2;
    }
    const fs::path output = argv[1];
    const std::vector<fs::path> sources(argv + 2, argv + argc);
    try {
        build(output, sources);
    } catch (const std::exception& error) {
        std::error_code ignored;
        fs::path temporary = output;
        temporary += ".part";
        fs::remove(temporary, ignored);
        std::fprintf(stderr, "makedb: %s\n", error.what());
        return 1;
    }
    return 0;
}
