// A scratch program folder for the micro-benchmarks: a copy of the built
// program folder's template with the run's connection open on its working
// database and the batch user interface installed, so that routines run as
// they do in `kelvary --batch`. An application may be loaded into it and its
// periods imported, as the print driver does before building payloads.
#pragma once

#include <QString>
#include <QTemporaryDir>

#include <cstdint>
#include <vector>

namespace kelvary::bench {

// The generated applications, by folder name under the build's bench data.
QString sampleApplication();               // the shipped sample
QString generatedApplication(const char* name);  // "large", "large-x2"

class BenchHome {
public:
    BenchHome();
    ~BenchHome();
    BenchHome(const BenchHome&) = delete;
    BenchHome& operator=(const BenchHome&) = delete;

    QString path() const { return dir_.path(); }
    QString temp(const QString& name) const;

    // Intake of an application file (basic info with the period index, then
    // the application record); returns the IndexIDs, newest period first.
    std::vector<std::int32_t> loadApplication(const QString& applicationFile);
    // The driver's import of one period into the working tables.
    void importPeriod(std::int32_t indexId);

private:
    QTemporaryDir dir_;
    QString previousPath_;
};

}  // namespace kelvary::bench
