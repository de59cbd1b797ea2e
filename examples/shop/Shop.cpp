#include "Shop.h"

#include "Random.h"
#include "Words.h"

#include <algorithm>
#include <set>

namespace shop {

namespace {

constexpr int customerCount = 240;
constexpr int employeeCount = 18;
constexpr int supplierCount = 24;
constexpr int productCount = 160;
constexpr int warehouseCount = 4;
constexpr int orderCount = 3600;
constexpr int firstOrder = 10001;
// Days are counted from the start of 2020.
constexpr int openingDay = 733;   // 2022-01-03
constexpr int closingDay = 2008;  // 2025-07-01

/// Money is counted in cents until it is stored.
double Money(int cents) {
    return cents / 100.0;
}

std::optional<std::string> Sometimes(Random& random, int percent, std::string text) {
    if (!random.Chance(percent)) return std::nullopt;
    return text;
}

std::string Phone(Random& random) {
    // The operands of a chain of "+" may be computed in any order; a draw at a time is not.
    std::string text = "+" + std::to_string(random.Between(20, 99));
    text += " " + std::to_string(random.Between(100, 999));
    text += " " + std::to_string(random.Between(100000, 999999));
    return text;
}

/// A picture of 16 by 16 points, as bitmap file.
std::vector<unsigned char> Portrait(int hue) {
    std::vector<unsigned char> file = {'B', 'M', 0x36, 3,  0, 0, 0, 0,  0, 0, 54, 0, 0, 0,  40,
                                       0,   0,   0,    16, 0, 0, 0, 16, 0, 0, 0,  1, 0, 24, 0};
    file.resize(54);
    for (int y = 0; y < 16; ++y)
        for (int x = 0; x < 16; ++x)
            for (const int channel : {hue * 13, x * 16, y * 16})
                file.push_back(static_cast<unsigned char>(channel));
    return file;
}

void FillCountries(Database& database) {
    Insert insert(database, "Countries", 4);
    for (const Country& country : countries)
        insert.Row({country.Code, country.Name, country.Currency, country.InUnion ? 1 : 0});
}

std::string CustomerName(Random& random, int index) {
    const auto named = static_cast<int>(std::size(namedCustomers));
    if (index < named) return namedCustomers[index];
    const std::string owner = random.Of(tradeNames);
    return owner + " " + random.Of(trades);
}

std::string Street(Random& random) {
    const std::string street = random.Of(streets);
    return street + " " + std::to_string(random.Between(1, 180));
}

void FillCustomers(Database& database, Random& random) {
    Insert insert(database, "Customers", 11);
    for (int index = 0; index < customerCount; ++index) {
        const Country& country = random.Of(countries);
        const std::string first = random.Of(firstNames);
        const std::string last = random.Of(lastNames);
        const std::string number = std::to_string(index + 1);
        const std::optional<double> limit =
            random.Chance(80) ? std::optional(Money(random.Between(2, 80) * 25000)) : std::nullopt;
        insert.Row({index + 1, CustomerName(random, index), Sometimes(random, 85, first + " " + last),
                    Street(random), random.Chance(70) ? country.City : country.SecondCity, country.Code,
                    Sometimes(random, 75, "customer" + number + "@example.com"), limit,
                    random.Chance(40) ? 1 : 0, DateText(random.Between(0, openingDay)),
                    Sometimes(random, 15, "Prefers mail.\r\nAsk for \"" + first + "\".")});
    }
}

void FillEmployees(Database& database, Random& random) {
    Insert insert(database, "Employees", 8);
    for (int id = 1; id <= employeeCount; ++id) {
        const bool chief = id == 1;
        const std::optional<int> superior =
            chief ? std::nullopt : std::optional(id <= 4 ? 1 : random.Between(2, 4));
        const std::optional<std::vector<unsigned char>> photo =
            random.Chance(60) ? std::optional(Portrait(id)) : std::nullopt;
        insert.Row({id, firstNames[id], lastNames[(id * 7) % std::size(lastNames)],
                    chief     ? "Director"
                    : id <= 4 ? "Head of Sales"
                              : random.Of(titles),
                    superior, DateText(random.Between(0, openingDay)), Money(random.Between(28, 75) * 100000),
                    photo});
    }
}

void FillSuppliers(Database& database, Random& random) {
    Insert insert(database, "Suppliers", 5);
    for (int id = 1; id <= supplierCount; ++id)
        insert.Row({id, std::string(lastNames[id - 1]) + (id % 3 ? " Trading" : " & Filles"),
                    random.Of(countries).Code, Sometimes(random, 80, Phone(random)), random.Between(1, 45)});
}

void FillCategories(Database& database) {
    Insert insert(database, "Categories", 3);
    int id = 0;
    for (const Category& category : categories) {
        const std::optional<std::string> description =
            category.Description ? std::optional<std::string>(category.Description) : std::nullopt;
        insert.Row({++id, category.Name, description});
    }
}

/// Returns the prices in cents, product by product.
std::vector<int> FillProducts(Database& database, Random& random) {
    Insert insert(database, "Products", 9);
    std::vector<int> prices;
    std::set<std::string> names;
    while (static_cast<int>(prices.size()) < productCount) {
        const int category = random.Below(static_cast<int>(std::size(categories)));
        const std::string quality = random.Of(qualities);
        const std::string name = quality + " " + random.Of(categories[category].Things);
        if (!names.insert(name).second) continue;
        prices.push_back(random.Between(4, 180) * 25 - 1);
        const std::optional<double> weight =
            random.Chance(85) ? std::optional(random.Between(1, 400) / 40.0) : std::nullopt;
        insert.Row({static_cast<int>(prices.size()), name, random.Between(1, supplierCount), category + 1,
                    Money(prices.back()), random.Between(0, 400), weight, random.Chance(70) ? 7.0 : 19.5,
                    random.Chance(8) ? 1 : 0});
    }
    return prices;
}

void FillWarehouses(Database& database, Random& random) {
    Insert warehouses(database, "Warehouses", 3);
    Insert stock(database, "Stock", 4);
    for (int id = 1; id <= warehouseCount; ++id) {
        const Country& country = countries[id * 3];
        warehouses.Row({id, country.City, country.Code});
        for (int product = 1; product <= productCount; ++product)
            if (random.Chance(45))
                stock.Row({id, product, random.Between(0, 120),
                           Sometimes(random, 70, DateText(random.Between(closingDay - 300, closingDay)))});
    }
}

void FillShippers(Database& database, Random& random) {
    Insert insert(database, "Shippers", 3);
    int id = 0;
    for (const char* name : shippers) insert.Row({++id, name, Sometimes(random, 75, Phone(random))});
}

/// Lines of one order; returns what they cost in cents.
int FillLines(Insert& lines, Random& random, int order, const std::vector<int>& prices) {
    std::set<int> products;
    const int wanted = random.Between(1, 6);
    while (static_cast<int>(products.size()) < wanted) products.insert(random.Between(1, productCount));
    int total = 0;
    for (const int product : products) {
        const int price = prices[static_cast<std::size_t>(product - 1)];
        const int quantity = random.Between(1, 24);
        const int discount = random.Chance(25) ? random.Between(1, 4) * 5 : 0;
        lines.Row({order, product, Money(price), quantity, discount / 100.0});
        total += price * quantity * (100 - discount) / 100;
    }
    return total;
}

void FillOrders(Database& database, Random& random, const std::vector<int>& prices) {
    Insert orders(database, "Orders", 10);
    Insert lines(database, "Order Details", 5);
    Insert payments(database, "Payments", 5);
    int payment = 0;
    for (int index = 0; index < orderCount; ++index) {
        const int order = firstOrder + index;
        const int day = openingDay + index * (closingDay - openingDay) / orderCount;
        const int shipped = day + random.Between(1, 12);
        const bool hasShipped = shipped < closingDay && !random.Chance(3);
        const bool paid = hasShipped && random.Chance(92);
        const std::optional<int> shipper = hasShipped ? std::optional(random.Between(1, 4)) : std::nullopt;
        const std::optional<std::string> shippedOn =
            hasShipped ? std::optional(DateText(shipped, random.Between(420, 1080))) : std::nullopt;
        orders.Row({order, random.Between(1, customerCount), random.Between(2, employeeCount), shipper,
                    DateText(day), DateText(day + 14), shippedOn, Money(random.Between(4, 60) * 50),
                    paid ? 1 : 0, Sometimes(random, 12, random.Of(comments))});
        const int total = FillLines(lines, random, order, prices);
        if (paid)
            payments.Row({++payment, order,
                          DateText(shipped + random.Between(0, 30), random.Between(480, 1200)), Money(total),
                          random.Of(methods)});
    }
}

void FillReviews(Database& database, Random& random) {
    Insert insert(database, "Reviews", 5);
    for (int product = 1; product <= productCount; ++product)
        for (int customer = random.Between(1, 40); customer <= customerCount;
             customer += random.Between(20, 90))
            insert.Row({product, customer,
                        DateText(random.Between(openingDay, closingDay), random.Between(1, 1439)),
                        std::min(5, random.Between(1, 7)), Sometimes(random, 60, random.Of(opinions))});
}

}  // namespace

void Fill(Database& database) {
    Random random(20220103);
    FillCountries(database);
    FillCustomers(database, random);
    FillEmployees(database, random);
    FillSuppliers(database, random);
    FillCategories(database);
    const std::vector<int> prices = FillProducts(database, random);
    FillWarehouses(database, random);
    FillShippers(database, random);
    FillOrders(database, random, prices);
    FillReviews(database, random);
}

}  // namespace shop
