// Every type: an expression, and the value that the client must read back, as SQL Server documents
// the type. Dates are read as UTC.
'use strict';

const date = (text) => new Date(text);
const bytes = (hex) => Buffer.from(hex, 'hex');

module.exports.Columns = [
    ['bit', "1", true],
    ['bit', "0", false],
    ['tinyint', "255", 255],
    ['smallint', "-32768", -32768],
    ['int', "-2147483648", -2147483648],
    ['int', "2147483647", 2147483647],
    ['bigint', "-9223372036854775808", '-9223372036854775808'],
    ['bigint', "9223372036854775807", '9223372036854775807'],
    ['real', "1.5", 1.5],
    ['float', "-2.2250738585072014E-308", -2.2250738585072014E-308],
    ['float', "1.7976931348623157E+308", 1.7976931348623157E+308],
    ['smallmoney', "-214748.3648", -214748.3648],
    ['money', "1234567.8912", 1234567.8912],
    ['decimal(9,4)', "-12345.6789", -12345.6789],
    ['numeric(19,0)', "1234567890123", 1234567890123],
    ['decimal(38,10)', "12.5", 12.5],
    ['char(5)', "'ab'", 'ab   '],
    ['varchar(10)', "'caf\u00e9'", 'caf\u00e9'],
    ['varchar(max)', "replicate(cast('x' as varchar(max)), 20000)", 'x'.repeat(20000)],
    ['nchar(4)', "N'\u03b1\u03b2'", '\u03b1\u03b2  '],
    ['nvarchar(20)', "N'\u8336 \ud83c\udf75 ''q'''", "\u8336 \ud83c\udf75 'q'"],
    ['nvarchar(max)', "N'\u041f\u0440\u0438\u0432\u0435\u0442'", '\u041f\u0440\u0438\u0432\u0435\u0442'],
    ['text', "'long'", 'long'],
    ['ntext', "N'\u8336'", '\u8336'],
    ['binary(4)', "0x0102", bytes('01020000')],
    ['varbinary(10)', "0x00FF", bytes('00ff')],
    ['varbinary(max)', "0x", bytes('')],
    ['image', "0xDEADBEEF", bytes('deadbeef')],
    ['date', "'0001-01-01'", date('0001-01-01T00:00:00Z')],
    ['date', "'9999-12-31'", date('9999-12-31T00:00:00Z')],
    ['time(3)', "'23:59:59.997'", date('1970-01-01T23:59:59.997Z')],
    ['smalldatetime', "'2079-06-06 23:59'", date('2079-06-06T23:59:00Z')],
    ['datetime', "'1753-01-01 00:00:00'", date('1753-01-01T00:00:00Z')],
    ['datetime', "'2024-02-29T12:34:56.997'", date('2024-02-29T12:34:56.997Z')],
    ['datetime2(3)', "'2024-02-29 12:34:56.789'", date('2024-02-29T12:34:56.789Z')],
    ['datetimeoffset(3)', "'2024-02-29 12:34:56.789 +05:30'", date('2024-02-29T07:04:56.789Z')],
    ['uniqueidentifier', "'6F9619FF-8B86-D011-B42D-00C04FC964FF'",
        '6F9619FF-8B86-D011-B42D-00C04FC964FF'],
    ['xml', "N'<a b=\"1\">\u8336</a>'", '<a b="1">\u8336</a>'],
];

// Parameters: the client's type, the value sent, the T-SQL type it has in the server.
module.exports.Parameters = [
    ['Bit', true], ['TinyInt', 200], ['SmallInt', -5], ['Int', 42],
    ['BigInt', '9007199254740993'], ['Real', 0.25], ['Float', 1e-7],
    ['Money', 12.25], ['SmallMoney', -0.5],
    ['Decimal', 123.45, { precision: 10, scale: 2 }],
    ['Numeric', -7.5, { precision: 20, scale: 1 }],
    ['VarChar', 'caf\u00e9'], ['NVarChar', '\u8336 \ud83c\udf75'],
    ['NVarChar', 'y'.repeat(10000)], ['Char', 'abc', { length: 3 }],
    ['VarBinary', bytes('00ff10')], ['Binary', bytes('0102'), { length: 2 }],
    ['Date', date('2024-02-29T00:00:00Z')], ['DateTime', date('2024-02-29T12:34:56.997Z')],
    ['DateTime2', date('2024-02-29T12:34:56.789Z'), { scale: 3 }],
    ['SmallDateTime', date('2024-02-29T12:34:00Z')],
    ['Time', date('1970-01-01T12:34:56.789Z'), { scale: 3 }],
    ['DateTimeOffset', date('2024-02-29T12:34:56.789Z'), { scale: 3 }],
    ['UniqueIdentifier', '6F9619FF-8B86-D011-B42D-00C04FC964FF'],
];
