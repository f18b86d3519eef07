-- The sample database: Mirel, a small trader of tea, spices and kitchenware. Runs in a new, empty
-- database.

CREATE TYPE PlaceName FROM nvarchar(40) NULL
CREATE TYPE PhoneNumber FROM nvarchar(30) NULL
CREATE TYPE Price FROM decimal(10, 2) NOT NULL
GO

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
    City PlaceName NULL,
    Country PlaceName NOT NULL,
    Phone PhoneNumber NULL
)
GO

CREATE TABLE Products (
    ProductID int NOT NULL CONSTRAINT PK_Products PRIMARY KEY,
    ProductName nvarchar(60) NOT NULL,
    CategoryID int NOT NULL,
    SupplierID int NULL,
    UnitPrice Price NOT NULL DEFAULT 0,
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
    City PlaceName NULL,
    Country PlaceName NOT NULL DEFAULT N'France',
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

CREATE TABLE Currencies (
    CurrencyCode nchar(3) NOT NULL CONSTRAINT PK_Currencies PRIMARY KEY,
    CurrencyName nvarchar(40) NOT NULL,
    Symbol nvarchar(4) NULL,
    EuroRate decimal(19, 9) NOT NULL,
    QuotedOn date NOT NULL
)
GO

CREATE TABLE Employees (
    EmployeeID smallint NOT NULL CONSTRAINT PK_Employees PRIMARY KEY,
    BadgeID uniqueidentifier NOT NULL CONSTRAINT DF_Employees_Badge DEFAULT newid(),
    FirstName nvarchar(30) NOT NULL,
    LastName nvarchar(40) NOT NULL,
    FullName AS FirstName + N' ' + LastName,
    ManagerID smallint NULL CONSTRAINT FK_Employees_Manager REFERENCES Employees,
    BornOn date NULL,
    HiredAt smalldatetime NOT NULL,
    ShiftBegins time(0) NULL,
    Salary money NULL CONSTRAINT CK_Employees_Salary CHECK (Salary >= 0),
    Desk tinyint NULL,
    IsActive bit NOT NULL CONSTRAINT DF_Employees_Active DEFAULT 1,
    Portrait varbinary(max) NULL
)
CREATE UNIQUE INDEX UX_Employees_Badge ON Employees (BadgeID)
CREATE INDEX IX_Employees_Name ON Employees (LastName, FirstName)
GO

CREATE TABLE Warehouses (
    WarehouseCode char(3) NOT NULL CONSTRAINT PK_Warehouses PRIMARY KEY,
    City nvarchar(40) NOT NULL,
    Latitude float NOT NULL,
    Longitude float NOT NULL,
    FloorArea real NULL,
    OpensAt time(0) NULL,
    ClosesAt time(0) NULL
)
GO

CREATE TABLE StockMovements (
    MovementID bigint NOT NULL CONSTRAINT PK_StockMovements PRIMARY KEY,
    ProductID int NOT NULL CONSTRAINT FK_StockMovements_Product REFERENCES Products,
    WarehouseCode char(3) NOT NULL CONSTRAINT FK_StockMovements_Warehouse REFERENCES Warehouses,
    MovedAt datetime2(3) NOT NULL,
    Quantity smallint NOT NULL,
    UnitCost smallmoney NOT NULL,
    Reference varchar(20) NULL
)
CREATE INDEX IX_StockMovements_Product ON StockMovements (ProductID, MovedAt)
GO

-- Several parcels an order: where each of them was seen last, by the clock of that place.
CREATE TABLE Shipments (
    OrderID int NOT NULL CONSTRAINT FK_Shipments_Order REFERENCES Orders ON DELETE CASCADE,
    ParcelNumber tinyint NOT NULL,
    Carrier nvarchar(30) NOT NULL,
    LastSeen datetimeoffset(0) NULL,
    WeightKg decimal(9, 3) NULL,
    Label binary(8) NULL,
    CONSTRAINT PK_Shipments PRIMARY KEY (OrderID, ParcelNumber)
)
GO

CREATE TABLE Documents (
    DocumentID uniqueidentifier NOT NULL CONSTRAINT PK_Documents PRIMARY KEY NONCLUSTERED,
    Title nvarchar(100) NOT NULL,
    Language nchar(2) NOT NULL,
    Body nvarchar(max) NULL,
    Properties xml NULL,
    Original varbinary(max) NULL,
    WrittenAt datetime2(7) NOT NULL,
    Version rowversion NOT NULL
)
GO

-- What the first shop program left behind, in the types of its time.
CREATE TABLE Archive (
    Year smallint NOT NULL,
    Sheet int NOT NULL,
    Caption varchar(60) NULL,
    PlainText text NULL,
    WideText ntext NULL,
    Scan image NULL,
    CONSTRAINT PK_Archive PRIMARY KEY (Year DESC, Sheet)
)
GO

CREATE TABLE [Supplier's Notes] (
    [Note #] int NOT NULL,
    SupplierID int NOT NULL CONSTRAINT [FK Supplier's Notes] REFERENCES Suppliers,
    [What they said] nvarchar(500) NULL,
    [Said on] date NOT NULL
)
CREATE INDEX [IX Supplier's Notes] ON [Supplier's Notes] (SupplierID)
GO

CREATE TABLE Measurements (
    SampleNumber int IDENTITY(1, 1) NOT NULL CONSTRAINT PK_Measurements PRIMARY KEY,
    ProductID int NOT NULL,
    Acidity real NULL,
    Caffeine float NULL,
    Grains bigint NULL,
    Verdict varchar(20) NULL,
    Fingerprint varbinary(16) NULL
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

INSERT INTO Currencies (CurrencyCode, CurrencyName, Symbol, EuroRate, QuotedOn) VALUES
    (N'EUR', N'Euro', N'€', 1, '20240102'),
    (N'INR', N'भारतीय रुपया', N'₹', 0.010979813, '20240102'),
    (N'JPY', N'日本円', N'¥', 0.006418485, '20240102'),
    (N'LKR', N'ශ්‍රී ලංකා රුපියල', NULL, 0.002812703, '20240102'),
    (N'JOD', N'دينار أردني', NULL, 1.287830006, '20240102'),
    (N'DKK', N'Dansk krone', N'kr.', 0.134158840, '20240102')
GO

INSERT INTO Employees
    (EmployeeID, BadgeID, FirstName, LastName, ManagerID, BornOn, HiredAt, ShiftBegins, Salary,
     Desk, IsActive, Portrait)
VALUES
    (1, '6F9619FF-8B86-D011-B42D-00C04FC964FF', N'Mireille', N'Fontaine', NULL, '19680229',
     '19980401 09:00', '09:00', 6200.00, 1, 1, 0x89504E470D0A1A0A),
    (2, '0E984725-C51C-4BF4-9960-E1C80E27ABA0', N'Bjørn', N'Ågård', 1, '19790715',
     '20050912 08:30', '08:30', 4150.50, 2, 1, NULL),
    (3, '1B4E28BA-2FA1-11D2-883F-B9A761BDE3FB', N'Zeynep', N'Öztürk', 1, '19900131',
     '20150601 10:00', '06:00', 3480.25, 7, 1, 0xFFD8FFE000104A464946),
    (4, '7D444840-9DC0-11D1-B245-5FFDCE74FAD2', N'Hải', N'Nguyễn', 2, NULL,
     '20210215 07:45', '22:00', NULL, NULL, 1, NULL),
    (5, '9E107D9D-372B-4B6D-8E4D-5C1E1C1A7A11', N'Ewa', N'Łukasik', 2, '20010911',
     '20230901 09:00', NULL, 2100.00, 12, 0, NULL)
GO

-- Whoever has no badge yet is given one.
INSERT INTO Employees (EmployeeID, FirstName, LastName, ManagerID, HiredAt)
VALUES (6, N'Tomás', N'O''Reilly', 3, '20240601 09:00')
GO

INSERT INTO Warehouses
    (WarehouseCode, City, Latitude, Longitude, FloorArea, OpensAt, ClosesAt)
VALUES
    ('NCY', N'Nancy', 48.6921, 6.1844, 410.5, '07:00', '19:30'),
    ('HAM', N'Hamburg', 53.5511, 9.9937, 1250, '06:00', '22:00'),
    ('PIR', N'Πειραιάς', 37.9420, 23.6469, 86.25, NULL, NULL)
GO

CREATE TABLE #Digits (N int NOT NULL)
INSERT INTO #Digits VALUES (0), (1), (2), (3), (4), (5), (6), (7), (8), (9)
GO

-- Three years of comings and goings, a movement every hour or so.
INSERT INTO StockMovements
    (MovementID, ProductID, WarehouseCode, MovedAt, Quantity, UnitCost, Reference)
SELECT m.N + 1, m.N * 7 % 27 + 1,
       CASE m.N % 5 WHEN 0 THEN 'PIR' WHEN 1 THEN 'HAM' WHEN 2 THEN 'HAM' ELSE 'NCY' END,
       dateadd(second, m.N * 3607 % 60, dateadd(minute, m.N * 63, '2022-01-03T07:00:00')),
       CASE WHEN m.N % 4 = 0 THEN 40 + m.N % 61 ELSE -(1 + m.N % 19) END,
       2.5 + m.N * 13 % 970 / 100.0,
       CASE WHEN m.N % 11 <> 0 THEN 'M-' + right('00000' + cast(m.N + 1 AS varchar(6)), 5) END
FROM (SELECT e.N * 10000 + d.N * 1000 + c.N * 100 + b.N * 10 + a.N AS N
      FROM #Digits a CROSS JOIN #Digits b CROSS JOIN #Digits c CROSS JOIN #Digits d
           CROSS JOIN #Digits e
      WHERE e.N < 3) m
WHERE m.N < 25000
DROP TABLE #Digits
GO

INSERT INTO Shipments (OrderID, ParcelNumber, Carrier, LastSeen, WeightKg, Label) VALUES
    (1001, 1, N'Colis Rapide', '2024-01-10 10:15:00 +01:00', 5.120, 0x0000A1B2C3D4E5F6),
    (1001, 2, N'Colis Rapide', '2024-01-10 10:15:00 +01:00', 1.480, 0x0000A1B2C3D4E5F7),
    (1002, 1, N'Hansekurier', '2024-01-17 08:02:11 +01:00', 4.920, NULL),
    (1003, 1, N'日の出便', '2024-02-12 09:30:00 +09:00', 1.100, 0x00),
    (1004, 1, N'An Post', '2024-02-23 11:45:00 +00:00', 13.450, NULL),
    (1006, 1, N'Nordpakke', '2024-03-22 14:20:00 +01:00', 2.900, 0x1122334455667788),
    (1008, 1, N'Ταχυμεταφορές', '2024-04-29 13:05:00 +03:00', 1.320, NULL),
    (1011, 1, N'דואר מהיר', '2024-06-27 16:40:00 +03:00', 3.150, 0xFFFFFFFFFFFFFFFF),
    (1013, 1, N'日の出便', NULL, NULL, NULL)
GO

INSERT INTO Documents (DocumentID, Title, Language, Body, Properties, Original, WrittenAt) VALUES
    ('A3E5C1B0-0001-4F6E-9C55-3D1F2A7B8C01', N'House blend', N'en',
     replicate(cast(N'Two parts Nilgiri, one part Dimbula, a pinch of patience. ' AS nvarchar(max)),
               120),
     N'<recipe serves="4"><tea grams="8">Nilgiri</tea><tea grams="4">Dimbula</tea></recipe>',
     0x255044462D312E370A, '2024-02-29 23:59:59.9999999'),
    ('A3E5C1B0-0002-4F6E-9C55-3D1F2A7B8C02', N'Conditions générales', N'fr',
     N'La marchandise reste la propriété du vendeur jusqu''au paiement. ☕', NULL, NULL,
     '2021-07-01 08:00:00'),
    ('A3E5C1B0-0003-4F6E-9C55-3D1F2A7B8C03', N'抹茶の点て方 🍵', N'ja',
     N'茶碗を温め、抹茶を二杯すくい、湯を注いで素早く点てる。',
     N'<guide><step n="1">温める</step><step n="2">点てる</step></guide>', NULL,
     '2023-11-11 11:11:11.1111111'),
    ('A3E5C1B0-0004-4F6E-9C55-3D1F2A7B8C04', N'Empty draft', N'en', N'', NULL, 0x, '0001-01-01')
GO

INSERT INTO Archive (Year, Sheet, Caption, PlainText, WideText, Scan) VALUES
    (1998, 1, 'Opening day', 'Sold: 3 tins of Assam, 1 teapot. Rain.', N'Première recette : 412 F',
     0x424D3E00000000000000),
    (1998, 2, 'Stocktaking', 'All present, one cup cracked.', NULL, NULL),
    (1999, 1, NULL, NULL, N'Neujahrsgrüße an alle 🎆', 0x00FF00FF),
    (2001, 1, 'The euro comes', 'Price tags in both currencies from January.', N'1 € = 6,55957 F',
     NULL)
GO

INSERT INTO [Supplier's Notes] ([Note #], SupplierID, [What they said], [Said on]) VALUES
    (1, 1, N'Frost tea is late this year: "wait for the cold"', '20240109'),
    (2, 4, N'Ο καιρός ήταν καλός, ο δίκταμος επίσης', '20240520'),
    (2, 4, N'Ο καιρός ήταν καλός, ο δίκταμος επίσης', '20240520'),
    (3, 6, N'السعر ثابت حتى نهاية السنة', '20240611'),
    (4, 2, NULL, '20240701')
GO

INSERT INTO Measurements
    (ProductID, Acidity, Caffeine, Grains, Verdict, Fingerprint)
VALUES
    (1, 4.9, 0.0275, 12000000000, 'clean', 0xCAFEBABE),
    (3, 6.125, 0.035000000000000003, NULL, 'excellent', NULL),
    (13, 5.55, 0, 1, 'clean', 0x),
    (21, NULL, 1.0E-12, 9223372036854775807, 'under the limit', 0x00112233445566778899AABBCCDDEEFF),
    (15, 3.4E38, -1.79E308, -9223372036854775808, 'instrument broken', NULL)
GO

CREATE VIEW ProductsToReorder AS
SELECT ProductID, ProductName, SupplierID, UnitsInStock, ReorderLevel
FROM Products
WHERE UnitsInStock < ReorderLevel
GO

CREATE VIEW OrderTotals AS
SELECT o.OrderID, c.CustomerName, o.OrderDate, count(*) AS Lines,
       sum(d.UnitPrice * d.Quantity * (1 - d.Discount)) + max(o.Freight) AS Total
FROM Orders o
JOIN Customers c ON c.CustomerID = o.CustomerID
JOIN [Order Details] d ON d.OrderID = o.OrderID
GROUP BY o.OrderID, c.CustomerName, o.OrderDate
GO

CREATE VIEW [Stock by Warehouse] AS
SELECT w.City, p.ProductName, sum(cast(m.Quantity AS int)) AS Quantity
FROM StockMovements m
JOIN Warehouses w ON w.WarehouseCode = m.WarehouseCode
JOIN Products p ON p.ProductID = m.ProductID
GROUP BY w.City, p.ProductName
GO

CREATE PROCEDURE OpenOrders AS
-- What has been ordered and not yet been sent, oldest first.
SELECT OrderID, CustomerID, OrderDate, Comment
FROM Orders
WHERE ShippedDate IS NULL
ORDER BY OrderDate
GO

CREATE PROCEDURE ProductsOfCategory
    @CategoryName nvarchar(30)
AS
SELECT p.ProductID, p.ProductName, p.UnitPrice, p.UnitsInStock
FROM Products p
JOIN Categories c ON c.CategoryID = p.CategoryID
WHERE c.CategoryName = @CategoryName
ORDER BY p.ProductName
GO

CREATE PROCEDURE MovementsOfProduct
    @ProductID int,
    @From datetime2(3) = '2022-01-01',
    @WarehouseCode char(3) = NULL,
    @Moved int OUTPUT
AS
-- The newest hundred; how much they come to is handed back.
SELECT TOP 100 MovementID, WarehouseCode, MovedAt, Quantity, UnitCost
FROM StockMovements
WHERE ProductID = @ProductID AND MovedAt >= @From
      AND (@WarehouseCode IS NULL OR WarehouseCode = @WarehouseCode)
ORDER BY MovedAt DESC
SELECT @Moved = sum(cast(Quantity AS int))
FROM StockMovements
WHERE ProductID = @ProductID AND MovedAt >= @From
      AND (@WarehouseCode IS NULL OR WarehouseCode = @WarehouseCode)
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
