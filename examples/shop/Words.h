#pragma once

// What names are made of. The lists are data; what stands in them decides which kinds of text the shop has:
// apostrophes, quotes, accents, and scripts other than Latin.

namespace shop {

struct Country {
    const char* Code;
    const char* Name;
    const char* Currency;
    bool InUnion;
    const char* City;
    const char* SecondCity;
};

inline constexpr Country countries[] = {
    {"AT", "Austria", "EUR", true, "Wien", "Graz"},
    {"BR", "Brazil", "BRL", false, "São Paulo", "Recife"},
    {"CA", "Canada", "CAD", false, "Montréal", "Vancouver"},
    {"CH", "Switzerland", "CHF", false, "Zürich", "Genève"},
    {"CI", "Côte d'Ivoire", "XOF", false, "Abidjan", "Bouaké"},
    {"CZ", "Czechia", "CZK", true, "Plzeň", "Brno"},
    {"DE", "Germany", "EUR", true, "Köln", "Leipzig"},
    {"DK", "Denmark", "DKK", true, "København", "Århus"},
    {"ES", "Spain", "EUR", true, "Sevilla", "A Coruña"},
    {"FR", "France", "EUR", true, "Lyon", "L'Haÿ-les-Roses"},
    {"GB", "United Kingdom", "GBP", false, "Leeds", "King's Lynn"},
    {"GR", "Greece", "EUR", true, "Αθήνα", "Θεσσαλονίκη"},
    {"IE", "Ireland", "EUR", true, "Cork", "Galway"},
    {"JP", "Japan", "JPY", false, "東京", "大阪"},
    {"PL", "Poland", "PLN", true, "Łódź", "Kraków"},
    {"SE", "Sweden", "SEK", true, "Malmö", "Göteborg"},
    {"TR", "Türkiye", "TRY", false, "İzmir", "Ankara"},
    {"UA", "Ukraine", "UAH", false, "Київ", "Львів"},
    {"US", "United States", "USD", false, "Portland", "Coeur d'Alene"},
    {"VN", "Vietnam", "VND", false, "Đà Nẵng", "Huế"},
};

inline constexpr const char* firstNames[] = {
    "Aoife",   "Björn", "Chloé",     "Dmytro", "Elif",   "Fumiko", "Grace",   "Håkan",
    "Inès",    "José",  "Katarzyna", "Liam",   "Maja",   "Nguyễn", "Olga",    "Paolo",
    "Quentin", "Rosa",  "Søren",     "Tomáš",  "Ursula", "Vera",   "William", "Zoë",
};

inline constexpr const char* lastNames[] = {
    "Andersen", "Brown",  "Černý",     "D'Angelo", "Eriksson", "Fischer", "García",  "Hughes",
    "Ivanenko", "Jansen", "Kowalczyk", "Lefèvre",  "Müller",   "Nowak",   "O'Brien", "Papadopoulos",
    "Quinn",    "Rossi",  "Schmidt",   "Tanaka",   "Üçok",     "Vogel",   "Weiß",    "Yılmaz",
};

/// Customers that stand in the shop as they are, in front of the made-up ones.
inline constexpr const char* namedCustomers[] = {
    "O'Neil & Sons",    "Käserei Zürich AG",  "Ελληνικά Τρόφιμα",   "株式会社さくら", "Кав'ярня «Зоря»",
    "مكتبة النور",      "Ünal Gıda",          "Smörgås & Co",       "Łódź Books",     "Đà Lạt Coffee",
    "The \"Old\" Mill", "100% Cotton [Ltd.]", "Rock 'n' Roll Café", "Δ-Labs #1",      "São João Padaria",
};

inline constexpr const char* tradeNames[] = {
    "Harbour", "Maple",  "North Star", "Red Brick", "Riverside", "Silver",   "Summit", "Sunny",
    "Union",   "Valley", "Willow",     "Corner",    "Blue Door", "Old Town", "Market",
};

inline constexpr const char* trades[] = {
    "Bakery",  "Books",   "Café",   "Deli",   "Foods",    "Garden",
    "Grocers", "Kitchen", "Pantry", "Stores", "Tea Room", "Wines",
};

inline constexpr const char* streets[] = {
    "Baker Street", "Bahnhofstraße", "Calle Mayor", "Rue de l'Église", "Storgatan",
    "Via Roma",     "Main Street",   "ul. Długa",   "Ermou",           "Queen's Road",
};

struct Category {
    const char* Name;
    const char* Description;
    const char* Things[8];
};

inline constexpr Category categories[] = {
    {"Beverages",
     "Coffee, tea, juices and what goes with them",
     {"Coffee", "Green Tea", "Apple Juice", "Cider", "Cocoa", "Lemonade", "Rooibos", "Mate"}},
    {"Bakery",
     "Bread and cakes, baked the same night",
     {"Rye Bread", "Croissant", "Baguette", "Pain d'épices", "Zwieback", "Brioche", "Crispbread", "Simit"}},
    {"Cheese & Dairy",
     nullptr,
     {"Gouda", "Feta", "Brie", "Skyr", "Butter", "Gruyère", "Halloumi", "Ricotta"}},
    {"Sweets",
     "Chocolate, biscuits, jam",
     {"Nougat", "Marmalade", "Shortbread", "Toffee", "Lakrits", "Halva", "Praliné", "Honey"}},
    {"Fruit & Vegetables",
     "Dried, pickled or in glasses",
     {"Olives", "Apricots", "Capers", "Gherkins", "Figs", "Mushrooms", "Beans", "Peppers"}},
    {"Oils & Spices",
     nullptr,
     {"Olive Oil", "Paprika", "Saffron", "Sea Salt", "Za'atar", "Curry", "Vanilla", "Mustard"}},
    {"Pasta & Rice",
     "Everything that wants boiling water",
     {"Spaghetti", "Penne", "Basmati", "Risotto", "Couscous", "Udon", "Spätzle", "Bulgur"}},
    {"Kitchenware",
     "Not for eating",
     {"Teapot", "Bread Knife", "Cutting Board", "Whisk", "Casserole", "Mug", "Apron", "Mortar"}},
};

inline constexpr const char* qualities[] = {"Classic", "Farmer's", "Organic",     "Premium",
                                            "Small",   "Smoked",   "Traditional", "Wild"};

inline constexpr const char* titles[] = {"Sales Representative", "Sales Representative", "Account Manager",
                                         "Packer", "Bookkeeper"};

inline constexpr const char* shippers[] = {"Swift Parcel", "Blue Arrow", "Köhler & Söhne Spedition",
                                           "Rapid'Éco"};

inline constexpr const char* methods[] = {"Card", "Transfer", "Cash", "Voucher"};

inline constexpr const char* comments[] = {
    "Leave at the neighbour's.",    "Don't ring before 9.",        "Gift: please wrap",
    "Ring twice; the bell is old.", "Bitte beim Pförtner abgeben", "配達時間指定",
};

inline constexpr const char* opinions[] = {
    "As described.", "It's lovely, we'll order again.",  "Arrived broken :-(", "Très bon !",
    "おいしい",      "Good, but the price went up 10%.", "Дуже смачно",
};

}  // namespace shop
