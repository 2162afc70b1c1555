// A few lines over the plain SQLite C API for the tests of the shipped
// databases. They read the generated files directly, without the program's
// own data access layer, so a fault in that layer cannot hide a fault in the
// schema or the other way round.
#pragma once

#include <sqlite3.h>

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace kelvary::test::appdata {

struct CloseDatabase {
    void operator()(sqlite3* db) const { sqlite3_close(db); }
};
struct FinalizeStatement {
    void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
};
using Statement = std::unique_ptr<sqlite3_stmt, FinalizeStatement>;

// One column as PRAGMA table_info reports it.
struct Column {
    std::string name;
    std::string declaredType;
    bool operator==(const Column&) const = default;
};

inline std::ostream& operator<<(std::ostream& out, const Column& column) {
    return out << column.name << " " << column.declaredType;
}

class Database {
public:
    // Read only unless asked otherwise: the build's files are never changed.
    explicit Database(const std::string& path, bool writable = false) {
        sqlite3* raw = nullptr;
        const int flags = writable ? SQLITE_OPEN_READWRITE : SQLITE_OPEN_READONLY;
        openResult_ = sqlite3_open_v2(path.c_str(), &raw, flags, nullptr);
        db_.reset(raw);
    }

    bool isOpen() const { return openResult_ == SQLITE_OK; }
    sqlite3* handle() const { return db_.get(); }
    std::string lastError() const { return sqlite3_errmsg(db_.get()); }

    // Prepares one statement; empty result and the error text when it fails.
    Statement prepare(const std::string& sql, std::string* error = nullptr) const {
        sqlite3_stmt* raw = nullptr;
        if (sqlite3_prepare_v2(db_.get(), sql.c_str(), -1, &raw, nullptr) != SQLITE_OK) {
            if (error) *error = lastError();
            sqlite3_finalize(raw);
            return {};
        }
        return Statement(raw);
    }

    // Runs one statement to its end; the error text, or empty on success.
    std::string run(const std::string& sql) const {
        std::string error;
        Statement statement = prepare(sql, &error);
        if (!statement) return error.empty() ? "no statement" : error;
        int stepped;
        while ((stepped = sqlite3_step(statement.get())) == SQLITE_ROW) {
        }
        return stepped == SQLITE_DONE ? std::string() : lastError();
    }

    // Rows of a query as texts; a Null reads as std::nullopt.
    using Row = std::vector<std::optional<std::string>>;
    std::vector<Row> rows(const std::string& sql) const {
        std::vector<Row> result;
        std::string error;
        Statement statement = prepare(sql, &error);
        EXPECT_TRUE(statement) << sql << "\n" << error;
        if (!statement) return result;
        while (sqlite3_step(statement.get()) == SQLITE_ROW) {
            Row row;
            for (int i = 0; i < sqlite3_column_count(statement.get()); ++i) {
                if (sqlite3_column_type(statement.get(), i) == SQLITE_NULL) {
                    row.emplace_back(std::nullopt);
                } else {
                    row.emplace_back(
                        reinterpret_cast<const char*>(sqlite3_column_text(statement.get(), i)));
                }
            }
            result.push_back(std::move(row));
        }
        return result;
    }

    // The first column of the first row as a number (0 when Null or absent).
    double number(const std::string& sql) const {
        Statement statement = prepare(sql);
        EXPECT_TRUE(statement) << sql << "\n" << lastError();
        if (!statement || sqlite3_step(statement.get()) != SQLITE_ROW) return 0;
        return sqlite3_column_double(statement.get(), 0);
    }

    // The first column of the first row as text (empty when Null or absent).
    std::string text(const std::string& sql) const {
        const auto result = rows(sql);
        if (result.empty() || result.front().empty() || !result.front().front()) return {};
        return *result.front().front();
    }

    std::vector<Column> columns(const std::string& table) const {
        std::vector<Column> result;
        for (const auto& row : rows("PRAGMA table_info(\"" + table + "\")")) {
            result.push_back({row.at(1).value_or(""), row.at(2).value_or("")});
        }
        return result;
    }

    std::vector<std::string> tableNames() const {
        std::vector<std::string> result;
        for (const auto& row :
             rows("SELECT name FROM sqlite_master WHERE type = 'table' ORDER BY name")) {
            result.push_back(row.at(0).value_or(""));
        }
        return result;
    }

private:
    std::unique_ptr<sqlite3, CloseDatabase> db_;
    int openResult_ = SQLITE_CANTOPEN;
};

}  // namespace kelvary::test::appdata
