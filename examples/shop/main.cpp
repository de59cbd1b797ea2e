// Writes the sample database: shop_generator SCHEMA.sql SHOP.db

#include "Shop.h"

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace {

std::string ReadText(const char* path) {
    std::ifstream file(path, std::ios::binary);
    if (!file) throw std::runtime_error(std::string("cannot read ") + path);
    return {std::istreambuf_iterator<char>(file), {}};
}

/// Makes the file under another name first, so that nobody ever opens half a database.
void Write(const char* schema, const std::filesystem::path& target) {
    const std::filesystem::path draft = target.string() + ".new";
    std::filesystem::remove(draft);
    {
        shop::Database database(draft.string());
        database.Run("PRAGMA foreign_keys = ON; PRAGMA synchronous = OFF; PRAGMA journal_mode = MEMORY");
        database.Run("BEGIN");
        database.Run(ReadText(schema));
        shop::Fill(database);
        database.Run("COMMIT");
    }
    std::filesystem::rename(draft, target);
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::fprintf(stderr, "usage: shop_generator SCHEMA.sql SHOP.db\n");
        return 2;
    }
    try {
        Write(argv[1], argv[2]);
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "shop_generator: %s\n", failure.what());
        return 1;
    }
    return 0;
}
