-- The sample database: Mirel, a small trader of tea, spices and kitchenware. Runs in a new, empty
-- database.

CREATE TABLE Categories (
    CategoryID int NOT NULL CONSTRAINT PK_Categories PRIMARY KEY,
    CategoryName nvarchar(30) NOT NULL,
    Description nvarchar(200) NULL
)
GO

CREATE TABLE Suppliers (
    SupplierID int NOT NULL CONSTRAINT PK_Suppliers PRIMARY KEY,
    CompanyName nvarchar(60) NOT NULL,
    ContactName nvarchar(60) NULL,
    City nvarchar(40) NULL,
    Country nvarchar(40) NOT NULL,
    Phone nvarchar(30) NULL
)
GO

CREATE TABLE Products (
    ProductID int NOT NULL CONSTRAINT PK_Products PRIMARY KEY,
    ProductName nvarchar(60) NOT NULL,
    CategoryID int NOT NULL,
    SupplierID int NULL,
    UnitPrice decimal(10, 2) NOT NULL DEFAULT 0,
    WeightKg decimal(9, 3) NULL,
    UnitsInStock int NOT NULL DEFAULT 0,
    ReorderLevel int NOT NULL DEFAULT 10,
    Remarks nvarchar(400) NULL
)
CREATE INDEX IX_Products_Category ON Products (CategoryID)
CREATE UNIQUE INDEX UX_Products_Name ON Products (ProductName)
GO

CREATE TABLE Customers (
    CustomerID int NOT NULL CONSTRAINT PK_Customers PRIMARY KEY,
    CustomerName nvarchar(80) NOT NULL,
    City nvarchar(40) NULL,
    Country nvarchar(40) NOT NULL DEFAULT N'France',
    CreditLimit decimal(12, 2) NULL,
    CustomerSince datetime NOT NULL,
    Notes nvarchar(400) NULL
)
CREATE INDEX IX_Customers_Country_City ON Customers (Country, City)
GO

CREATE TABLE Orders (
    OrderID int NOT NULL CONSTRAINT PK_Orders PRIMARY KEY,
    CustomerID int NOT NULL,
    OrderDate datetime NOT NULL,
    ShippedDate datetime NULL,
    Freight decimal(10, 2) NOT NULL DEFAULT 0,
    Comment nvarchar(200) NULL
)
CREATE INDEX IX_Orders_Customer ON Orders (CustomerID, OrderDate)
GO

CREATE TABLE [Order Details] (
    OrderID int NOT NULL,
    LineNumber int NOT NULL,
    ProductID int NOT NULL,
    UnitPrice decimal(10, 2) NOT NULL,
    Quantity int NOT NULL,
    Discount decimal(5, 4) NOT NULL DEFAULT 0,
    CONSTRAINT PK_Order_Details PRIMARY KEY (OrderID, LineNumber)
)
CREATE INDEX IX_Order_Details_Product ON [Order Details] (ProductID)
GO

-- A log has no key: rows are told apart by nothing but their content.
CREATE TABLE PriceLog (
    ChangedAt datetime NOT NULL,
    ProductID int NOT NULL,
    OldPrice decimal(10, 2) NULL,
    NewPrice decimal(10, 2) NULL,
    Reason nvarchar(100) NULL
)
GO

INSERT INTO Categories (CategoryID, CategoryName, Description) VALUES
    (1, N'Tea', N'Black, green, white and oolong, by the kilogram'),
    (2, N'Herbs', N'Dried leaves and flowers for infusions'),
    (3, N'Spices', N'Whole and ground'),
    (4, N'Kitchenware', N'Pots, cups, mills and mortars'),
    (5, N'Gifts', NULL)
GO

INSERT INTO Suppliers (SupplierID, CompanyName, ContactName, City, Country, Phone) VALUES
    (1, N'Nilgiri Hills Estates', N'Asha Raghavan', N'Coonoor', N'India', N'+91 423 555 0142'),
    (2, N'宇治茶園', N'中村 結衣', N'宇治市', N'日本', N'+81 774 55 0118'),
    (3, N'Gewürzhaus Übersee', N'Jürgen Groß', N'Hamburg', N'Deutschland', N'+49 40 555 0173'),
    (4, N'Βότανα Κρήτης', N'Ελένη Μαρκάκη', N'Ηράκλειο', N'Ελλάδα', NULL),
    (5, N'Poterie de l''Ardèche', N'Zoé Lefèvre', N'Aubenas', N'France', N'+33 4 75 55 01 29'),
    (6, N'شركة البهارات الشرقية', N'ليلى حداد', N'عمّان', N'الأردن', N'+962 6 555 0107'),
    (7, N'Ceylon Leaf Co-operative', NULL, N'Kandy', N'Sri Lanka', N'+94 81 555 0160')
GO

INSERT INTO Products
    (ProductID, ProductName, CategoryID, SupplierID, UnitPrice, WeightKg, UnitsInStock,
     ReorderLevel, Remarks)
VALUES
    (1, N'Nilgiri Frost', 1, 1, 38.50, 0.500, 64, 20, N'Picked in January, light and fruity'),
    (2, N'Nilgiri Broken Orange Pekoe', 1, 1, 19.00, 1.000, 130, 40, NULL),
    (3, N'玉露 Gyokuro', 1, 2, 92.00, 0.100, 18, 10, N'Shaded for three weeks; brew at 50 °C'),
    (4, N'煎茶 Sencha', 1, 2, 34.80, 0.200, 75, 25, NULL),
    (5, N'抹茶 Matcha 🍵', 1, 2, 61.25, 0.040, 42, 20, N'Keep cold once opened'),
    (6, N'Kandy Silver Tips', 1, 7, 118.00, 0.050, 6, 8, N'White tea, a few kilograms a year'),
    (7, N'Dimbula Breakfast', 1, 7, 16.40, 1.000, 210, 60, NULL),
    (8, N'Uva Highland', 1, 7, 24.90, 0.500, 0, 15, N'Sold out until the August season'),
    (9, N'Δίκταμο', 2, 4, 14.20, 0.050, 33, 12, N'Dittany, wild on the cliffs of Crete'),
    (10, N'Τσάι του βουνού', 2, 4, 9.80, 0.060, 51, 20, NULL),
    (11, N'Verveine', 2, 5, 8.60, 0.050, 27, 15, NULL),
    (12, N'Tilleul', 2, 5, 7.90, 0.050, 0, 15, NULL),
    (13, N'Pfefferminze', 2, 3, 6.75, 0.100, 88, 30, NULL),
    (14, N'Green Cardamom', 3, 1, 46.00, 0.250, 39, 15, N'Eight millimetres and up'),
    (15, N'Tellicherry Pepper', 3, 1, 29.30, 0.500, 57, 20, NULL),
    (16, N'Ceylon Cinnamon Quills', 3, 7, 31.10, 0.250, 44, 20, NULL),
    (17, N'زعتر Za''atar', 3, 6, 11.50, 0.250, 71, 25, N'With sumac and sesame'),
    (18, N'سمّاق Sumac', 3, 6, 10.25, 0.250, 66, 25, NULL),
    (19, N'Zimtblüten', 3, 3, 27.40, 0.100, 12, 10, N'Cassia buds, hard to find'),
    (20, N'Vanille Bourbon', 3, 3, 4.95, 0.003, 240, 100, N'By the pod'),
    (21, N'Κρόκος Saffron', 3, 4, 5.60, 0.001, 150, 50, N'By the gram'),
    (22, N'Théière en grès', 4, 5, 54.00, 0.920, 9, 4, N'Holds 0.8 litres'),
    (23, N'Bol à thé', 4, 5, 18.00, 0.240, 36, 12, NULL),
    (24, N'急須 Kyūsu', 4, 2, 76.50, 0.310, 5, 3, NULL),
    (25, N'Pfeffermühle', 4, 3, 42.00, 0.450, 14, 6, N'Steel grinder, walnut'),
    (26, N'Mortar & Pestle', 4, NULL, 23.75, 1.800, 11, 5, NULL),
    (27, N'Tea Chest "Voyage"', 5, NULL, 49.90, 1.150, 20, 5, N'Five teas, 50 g each 🎁'),
    (28, N'Gift Card', 5, NULL, 0.00, NULL, 0, 0, NULL)
GO

INSERT INTO Customers
    (CustomerID, CustomerName, City, Country, CreditLimit, CustomerSince, Notes)
VALUES
    (1, N'Café Mirabelle', N'Nancy', N'France', 2500.00, '20190304 09:30:00', NULL),
    (2, N'Brasserie du Port', N'Brest', N'France', 1200.00, '20190611 14:05:00',
     N'Delivers itself on Tuesdays'),
    (3, N'Teehaus Sonnenschein', N'Köln', N'Deutschland', 4000.00, '20200115 10:00:00', NULL),
    (4, N'O''Brien & Daughters', N'Galway', N'Éire', 1800.00, '20200227 16:45:30', NULL),
    (5, N'Παντοπωλείο Άννα', N'Θεσσαλονίκη', N'Ελλάδα', 900.00, '20200909 08:15:00', NULL),
    (6, N'Чайная на Фонтанке', N'Санкт-Петербург', N'Россия', NULL, '20210118 11:20:00', NULL),
    (7, N'喫茶 こもれび', N'京都', N'日本', 3500.00, '20210402 13:00:00', N'Asks for samples 🙂'),
    (8, N'מסעדת הזית', N'חיפה', N'ישראל', 1500.00, '20210721 17:10:00', NULL),
    (9, N'Smørrebrød & Sønner', N'København', N'Danmark', 2200.00, '20211005 09:00:00', NULL),
    (10, N'Herbário Lisboa', N'Lisboa', N'Portugal', NULL, '20220214 12:00:00',
     N'Pays in advance'),
    (11, N'Żółta Filiżanka', N'Łódź', N'Polska', 1000.00, '20220830 15:30:00', NULL),
    (12, N'Épicerie Fine', NULL, N'France', 5000.00, '20230112 10:10:10.123', NULL)
GO

-- A customer who left no country lives where most of them live.
INSERT INTO Customers (CustomerID, CustomerName, City, CreditLimit, CustomerSince, Notes)
VALUES (13, N'Madame Petit', N'Lyon', 150.00, '20240229 18:00:00', N'Private customer')
GO

INSERT INTO Orders (OrderID, CustomerID, OrderDate, ShippedDate, Freight, Comment) VALUES
    (1001, 1, '20240108 10:12:00', '20240110 08:00:00', 12.40, NULL),
    (1002, 3, '20240115 09:48:30', '20240116 15:20:00', 18.90, NULL),
    (1003, 7, '20240202 07:05:00', '20240209 12:00:00', 64.00, N'Customs papers enclosed'),
    (1004, 4, '20240219 16:30:00', '20240221 09:10:00', 22.75, NULL),
    (1005, 2, '20240305 11:00:00', '20240305 17:45:00', 0.00, N'Collected at the shop'),
    (1006, 9, '20240318 13:27:00', '20240320 10:00:00', 19.95, NULL),
    (1007, 12, '20240402 08:55:00', '20240404 08:00:00', 14.10, NULL),
    (1008, 5, '20240423 18:20:00', '20240426 11:30:00', 31.00, NULL),
    (1009, 11, '20240514 12:12:12', '20240517 09:00:00', 21.50, NULL),
    (1010, 1, '20240603 10:40:00', '20240604 08:00:00', 12.40, NULL),
    (1011, 8, '20240620 09:09:00', '20240625 14:00:00', 58.30, N'Ναι, it is a gift 🎁'),
    (1012, 13, '20240701 20:15:00', '20240702 08:00:00', 6.90, NULL),
    (1013, 7, '20240816 06:50:00', '20240823 12:00:00', 64.00, NULL),
    (1014, 3, '20240910 15:33:00', NULL, 18.90, N'Waits for the new Uva'),
    (1015, 10, '20240926 11:11:00', NULL, 27.20, NULL)
GO

INSERT INTO [Order Details]
    (OrderID, LineNumber, ProductID, UnitPrice, Quantity, Discount)
VALUES
    (1001, 1, 7, 16.40, 4, 0), (1001, 2, 11, 8.60, 6, 0.0500), (1001, 3, 23, 18.00, 2, 0),
    (1002, 1, 1, 38.50, 5, 0.1000), (1002, 2, 13, 6.75, 10, 0), (1002, 3, 22, 54.00, 1, 0),
    (1003, 1, 5, 61.25, 12, 0.1250), (1003, 2, 24, 76.50, 2, 0),
    (1004, 1, 7, 16.40, 10, 0.0500), (1004, 2, 27, 49.90, 3, 0),
    (1005, 1, 15, 29.30, 2, 0), (1005, 2, 16, 31.10, 2, 0), (1005, 3, 25, 42.00, 1, 0),
    (1006, 1, 14, 46.00, 3, 0), (1006, 2, 20, 4.95, 50, 0.2000),
    (1007, 1, 3, 92.00, 2, 0), (1007, 2, 6, 118.00, 1, 0), (1007, 3, 21, 5.60, 20, 0.0750),
    (1008, 1, 10, 9.80, 12, 0), (1008, 2, 9, 14.20, 6, 0),
    (1009, 1, 2, 19.00, 3, 0), (1009, 2, 18, 10.25, 4, 0),
    (1010, 1, 7, 16.40, 4, 0), (1010, 2, 12, 7.90, 6, 0),
    (1011, 1, 17, 11.50, 8, 0), (1011, 2, 27, 49.90, 1, 0),
    (1012, 1, 28, 0.00, 1, 0), (1012, 2, 23, 18.00, 1, 0.1000),
    (1013, 1, 4, 34.80, 10, 0.1000), (1013, 2, 3, 92.00, 1, 0),
    (1014, 1, 8, 24.90, 6, 0),
    (1015, 1, 19, 27.40, 2, 0), (1015, 2, 26, 23.75, 1, 0), (1015, 3, 1, 38.50, 1, 0)
GO

INSERT INTO PriceLog (ChangedAt, ProductID, OldPrice, NewPrice, Reason) VALUES
    ('20231229 17:00:00', 7, 15.90, 16.40, N'New season'),
    ('20231229 17:00:00', 20, 5.80, 4.95, N'Good harvest'),
    ('20240301 09:30:00', 6, 104.00, 118.00, NULL),
    ('20240615 12:00:00.997', 28, NULL, 0.00, N'New article'),
    ('20240615 12:00:00.997', 28, NULL, 0.00, N'New article')
GO

CREATE VIEW ProductsToReorder AS
SELECT ProductID, ProductName, SupplierID, UnitsInStock, ReorderLevel
FROM Products
WHERE UnitsInStock < ReorderLevel
GO

CREATE PROCEDURE OpenOrders AS
-- What has been ordered and not yet been sent, oldest first.
SELECT OrderID, CustomerID, OrderDate, Comment
FROM Orders
WHERE ShippedDate IS NULL
ORDER BY OrderDate
GO

CREATE PROCEDURE OrdersOfCustomer
    @CustomerID int,
    @Since datetime
AS
SELECT OrderID, OrderDate, ShippedDate, Freight
FROM Orders
WHERE CustomerID = @CustomerID AND OrderDate >= @Since
ORDER BY OrderDate DESC
GO
