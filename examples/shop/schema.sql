-- A mail-order shop. Declared types are those of a server, so that every kind of value occurs under its proper name;
-- dates are ISO texts, without a time where it is midnight.

CREATE TABLE Countries (
    CountryCode    nchar(2)      NOT NULL PRIMARY KEY,
    [Country Name] nvarchar(60)  NOT NULL,
    Currency       nchar(3)      NOT NULL,
    [In Union]     bit           NOT NULL
);

CREATE TABLE Customers (
    CustomerID      int           NOT NULL PRIMARY KEY,
    [Customer Name] nvarchar(80)  NOT NULL,
    Contact         nvarchar(60),
    Street          nvarchar(80)  NOT NULL,
    City            nvarchar(40)  NOT NULL,
    CountryCode     nchar(2)      NOT NULL REFERENCES Countries (CountryCode),
    Email           varchar(120),
    [Credit Limit]  money,
    Newsletter      bit           NOT NULL,
    Since           datetime      NOT NULL,
    Notes           ntext
);

CREATE TABLE Employees (
    EmployeeID    int           NOT NULL PRIMARY KEY,
    [First Name]  nvarchar(30)  NOT NULL,
    [Last Name]   nvarchar(40)  NOT NULL,
    Title         nvarchar(40)  NOT NULL,
    ReportsTo     int           REFERENCES Employees (EmployeeID),
    [Hire Date]   datetime      NOT NULL,
    Salary        money         NOT NULL,
    Photo         image
);

CREATE TABLE Suppliers (
    SupplierID      int           NOT NULL PRIMARY KEY,
    [Supplier Name] nvarchar(80)  NOT NULL,
    CountryCode     nchar(2)      NOT NULL REFERENCES Countries (CountryCode),
    Phone           varchar(24),
    [Lead Days]     tinyint       NOT NULL
);

CREATE TABLE Categories (
    CategoryID      int           NOT NULL PRIMARY KEY,
    [Category Name] nvarchar(30)  NOT NULL UNIQUE,
    Description     ntext
);

CREATE TABLE Products (
    ProductID        int            NOT NULL PRIMARY KEY,
    [Product Name]   nvarchar(60)   NOT NULL,
    SupplierID       int            NOT NULL REFERENCES Suppliers (SupplierID),
    CategoryID       int            NOT NULL REFERENCES Categories (CategoryID),
    [Unit Price]     money          NOT NULL,
    [Units In Stock] smallint       NOT NULL,
    Weight           float,
    [Tax Rate]       decimal(5, 2)  NOT NULL,
    Discontinued     bit            NOT NULL
);

CREATE TABLE Warehouses (
    WarehouseID int           NOT NULL PRIMARY KEY,
    City        nvarchar(40)  NOT NULL,
    CountryCode nchar(2)      NOT NULL REFERENCES Countries (CountryCode)
);

CREATE TABLE Stock (
    WarehouseID int       NOT NULL REFERENCES Warehouses (WarehouseID),
    ProductID   int       NOT NULL REFERENCES Products (ProductID),
    Quantity    smallint  NOT NULL,
    Counted     datetime,
    PRIMARY KEY (WarehouseID, ProductID)
);

CREATE TABLE Shippers (
    ShipperID      int           NOT NULL PRIMARY KEY,
    [Company Name] nvarchar(60)  NOT NULL,
    Phone          varchar(24)
);

CREATE TABLE Orders (
    OrderID         int       NOT NULL PRIMARY KEY,
    CustomerID      int       NOT NULL REFERENCES Customers (CustomerID),
    EmployeeID      int       NOT NULL REFERENCES Employees (EmployeeID),
    ShipperID       int       REFERENCES Shippers (ShipperID),
    [Order Date]    datetime  NOT NULL,
    [Required Date] datetime  NOT NULL,
    [Shipped Date]  datetime,
    Freight         money     NOT NULL,
    Paid            bit       NOT NULL,
    Comment         nvarchar(200)
);

CREATE TABLE [Order Details] (
    OrderID      int       NOT NULL REFERENCES Orders (OrderID),
    ProductID    int       NOT NULL REFERENCES Products (ProductID),
    [Unit Price] money     NOT NULL,
    Quantity     smallint  NOT NULL,
    Discount     real      NOT NULL,
    PRIMARY KEY (OrderID, ProductID)
);

CREATE TABLE Payments (
    PaymentID bigint        NOT NULL PRIMARY KEY,
    OrderID   int           NOT NULL REFERENCES Orders (OrderID),
    [Paid On] datetime      NOT NULL,
    Amount    money         NOT NULL,
    Method    nvarchar(20)  NOT NULL
);

CREATE TABLE Reviews (
    ProductID  int       NOT NULL REFERENCES Products (ProductID),
    CustomerID int       NOT NULL REFERENCES Customers (CustomerID),
    Written    datetime  NOT NULL,
    Stars      tinyint   NOT NULL CHECK (Stars BETWEEN 1 AND 5),
    Text       ntext,
    PRIMARY KEY (ProductID, CustomerID)
);

CREATE INDEX OrdersByCustomer ON Orders (CustomerID);
CREATE INDEX OrdersByDate ON Orders ([Order Date]);
CREATE INDEX DetailsByProduct ON [Order Details] (ProductID);
CREATE INDEX PaymentsByOrder ON Payments (OrderID);

CREATE VIEW [Open Orders] AS
    SELECT o.OrderID, c.[Customer Name], o.[Order Date], o.[Required Date]
    FROM Orders AS o INNER JOIN Customers AS c ON o.CustomerID = c.CustomerID
    WHERE o.[Shipped Date] IS NULL;

CREATE VIEW [Order Totals] AS
    SELECT OrderID, COUNT(*) AS Lines, SUM([Unit Price] * Quantity * (1 - Discount)) AS Total
    FROM [Order Details]
    GROUP BY OrderID;

CREATE VIEW [Product List] AS
    SELECT p.[Product Name], g.[Category Name], s.[Supplier Name], p.[Unit Price]
    FROM Products AS p
        INNER JOIN Categories AS g ON p.CategoryID = g.CategoryID
        INNER JOIN Suppliers AS s ON p.SupplierID = s.SupplierID
    WHERE p.Discontinued = 0;
