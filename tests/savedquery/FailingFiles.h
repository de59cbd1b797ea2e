#pragma once

#include "savedquery/QueryFiles.h"

#include <zephrin/ado/Error.h>

namespace zephrin::test {

/// Fails its n-th step, counted from 0.
class FailingFiles : public QueryFiles {
 public:
    explicit FailingFiles(int step) : left(step) {}
    bool Failed() const { return left < 0; }

    void Save(const ado::Recordset& rows, const QString& path, ado::Recordset::FileAccess access) override {
        Step();
        QueryFiles::Save(rows, path, access);
    }
    void Open(ado::Recordset& rows, const QString& path) override {
        Step();
        QueryFiles::Open(rows, path);
    }
    void Rename(const QString& from, const QString& to) override {
        Step();
        QueryFiles::Rename(from, to);
    }
    void Remove(const QString& path) override {
        Step();
        QueryFiles::Remove(path);
    }

 private:
    void Step() {
        if (left-- == 0)
            throw ado::Error(ado::ErrorNumber::ProviderFailed, QStringLiteral("No space left on device"));
    }
    int left;
};

}  // namespace zephrin::test
