// The table is long because it is data: one row a message, in the order of their numbers, kept in
// one file so that each number stands once.
#include "localdb/engine/MessageTable.h"

#include <algorithm>
#include <iterator>

namespace quarv::localdb::engine {

namespace {

constexpr MessageText Table[] = {
    {102, 15, 1, u"Incorrect syntax near '%'."},
    {103, 15, 4, u"The identifier that starts with '%' is too long. Maximum length is 128."},
    {104, 16, 1,
     u"ORDER BY items must appear in the select list if the statement contains a "
     u"UNION, INTERSECT or EXCEPT operator."},
    {105, 15, 1, u"Unclosed quotation mark after the character string '%'."},
    {107, 15, 1,
     u"The column prefix '%' does not match with a table name or alias name used in the query."},
    {108, 16, 1,
     u"The ORDER BY position number % is out of range of the number of items in the select list."},
    {109, 15, 1,
     u"There are more columns in the INSERT statement than values specified in the VALUES clause. "
     u"The number of values in the VALUES clause must match the number of columns specified in the "
     u"INSERT statement."},
    {110, 15, 1,
     u"There are fewer columns in the INSERT statement than values specified in the VALUES clause. "
     u"The number of values in the VALUES clause must match the number of columns specified in the "
     u"INSERT statement."},
    {111, 15, 1, u"'%' must be the first statement in a query batch."},
    {113, 15, 1, u"Missing end comment mark '*/'."},
    {116, 16, 1,
     u"Only one expression can be specified in the select list when the subquery is not introduced "
     u"with EXISTS."},
    {119, 15, 1,
     u"Must pass parameter number % and subsequent parameters as '@name = value'. After the form "
     u"'@name = value' has been used, all subsequent parameters must be passed in the form '@name "
     u"= value'."},
    {120, 15, 1,
     u"The select list for the INSERT statement contains fewer items than the insert list. The "
     u"number of SELECT values must match the number of INSERT columns."},
    {121, 15, 1,
     u"The select list for the INSERT statement contains more items than the insert list. The "
     u"number of SELECT values must match the number of INSERT columns."},
    {127, 15, 1, u"A TOP N or FETCH rowcount value may not be negative."},
    {128, 15, 1,
     u"The name \"%\" is not permitted in this context. Valid expressions are constants, constant "
     u"expressions, and (in some contexts) variables. Column names are not permitted."},
    {130, 16, 1,
     u"Cannot perform an aggregate function on an expression containing an aggregate or a "
     u"subquery."},
    {131, 15, 2,
     u"The size (%) given to the % '%' exceeds the maximum allowed for any data type (%)."},
    {132, 15, 1,
     u"The label '%' has already been declared. Label names must be unique within a query batch or "
     u"stored procedure."},
    {133, 15, 1, u"A GOTO statement references the label '%' but the label has not been declared."},
    {134, 15, 2,
     u"The variable name '%' has already been declared. Variable names must be unique within a "
     u"query batch or stored procedure."},
    {135, 15, 1, u"Cannot use a BREAK statement outside the scope of a WHILE statement."},
    {136, 15, 1, u"Cannot use a CONTINUE statement outside the scope of a WHILE statement."},
    {137, 15, 2, u"Must declare the scalar variable \"%\"."},
    {141, 15, 1,
     u"A SELECT statement that assigns a value to a variable must not be combined with "
     u"data-retrieval operations."},
    {145, 15, 1, u"ORDER BY items must appear in the select list if SELECT DISTINCT is specified."},
    {147, 15, 1,
     u"An aggregate may not appear in the WHERE clause unless it is in a subquery contained in a "
     u"HAVING clause or a select list, and the column being aggregated is an outer reference."},
    {148, 15, 1, u"Incorrect time syntax in time string '%' used with WAITFOR."},
    {155, 15, 1, u"'%' is not a recognized % option."},
    {156, 15, 1, u"Incorrect syntax near the keyword '%'."},
    {158, 15, 1, u"An aggregate may not appear in the OUTPUT clause."},
    {164, 15, 1,
     u"Each GROUP BY expression must contain at least one column that is not an outer reference."},
    {166, 15, 1,
     u"'%' does not allow specifying the database name as a prefix to the object name."},
    {174, 15, 1, u"The % function requires % argument(s)."},
    {178, 15, 1, u"A RETURN statement with a return value cannot be used in this context."},
    {189, 15, 1, u"The % function requires % to % arguments."},
    {191, 15, 1,
     u"Some part of your SQL statement is nested too deeply. Rewrite the query or break it up into "
     u"smaller queries."},
    {194, 15, 1,
     u"A SELECT INTO statement cannot contain a SELECT statement that assigns values to a "
     u"variable."},
    {195, 15, 10, u"'%' is not a recognized %."},
    {196, 15, 1,
     u"SELECT INTO must be the first query in a statement containing a UNION, "
     u"INTERSECT or EXCEPT operator."},
    {201, 16, 4, u"Procedure or function '%' expects parameter '%', which was not supplied."},
    {205, 16, 1,
     u"All queries combined using a UNION, INTERSECT or EXCEPT operator must have an "
     u"equal number of expressions in their target lists."},
    {206, 16, 2, u"Operand type clash: % is incompatible with %"},
    {207, 16, 1, u"Invalid column name '%'."},
    {208, 16, 1, u"Invalid object name '%'."},
    {209, 16, 1, u"Ambiguous column name '%'."},
    {213, 16, 1, u"Column name or number of supplied values does not match table definition."},
    {214, 16, 11, u"Procedure expects parameter '%' of type '%'."},
    {217, 16, 1,
     u"Maximum stored procedure, function, trigger, or view nesting level exceeded (limit %)."},
    {218, 16, 1,
     u"Could not find the type '%'. Either it does not exist or you do not have the necessary "
     u"permission."},
    {219, 16, 1, u"The type '%' already exists, or you do not have permission to create it."},
    {220, 16, 1, u"Arithmetic overflow error for data type %, value = %."},
    {222, 16, 1, u"The base type \"%\" is not a valid base type for the alias data type."},
    {226, 16, 6, u"% statement not allowed within multi-statement transaction."},
    {232, 16, 2, u"Arithmetic overflow error for type %, value = %."},
    {234, 16, 2, u"There is insufficient result space to convert a money value to %."},
    {235, 16, 0, u"Cannot convert a char value to money. The char value has incorrect syntax."},
    {239, 16, 1, u"Duplicate common table expression name '%' was specified."},
    {240, 16, 1,
     u"Types don't match between the anchor and the recursive part in column \"%\" of "
     u"recursive query \"%\"."},
    {241, 16, 1, u"Conversion failed when converting date and/or time from character string."},
    {242, 16, 3,
     u"The conversion of a % data type to a % data type resulted in an out-of-range value."},
    {243, 16, 1, u"Type % is not a defined system type."},
    {244, 16, 1,
     u"The conversion of the % value '%' overflowed an % column. Use a larger integer column."},
    {245, 16, 1, u"Conversion failed when converting the % value '%' to data type %."},
    {246, 16, 1, u"No anchor member was specified for recursive query \"%\"."},
    {247, 16, 1, u"An anchor member was found in the recursive part of recursive query \"%\"."},
    {248, 16, 1, u"The conversion of the % value '%' overflowed an int column."},
    {252, 16, 1,
     u"Recursive common table expression '%' does not contain a top-level UNION ALL "
     u"operator."},
    {253, 16, 1,
     u"Recursive member of a common table expression '%' has multiple recursive "
     u"references."},
    {257, 16, 3,
     u"Implicit conversion from data type % to % is not allowed. Use the CONVERT function to run "
     u"this query."},
    {259, 16, 1, u"Ad hoc updates to system catalogs are not allowed."},
    {263, 16, 1, u"Must specify table to select from."},
    {264, 16, 1,
     u"The column name '%' is specified more than once in the SET clause or column list of an "
     u"INSERT. A column cannot be assigned more than one value in the same clause. Modify the "
     u"clause to make sure that a column is updated only once. If this statement updates or "
     u"inserts columns into a view, column aliasing can conceal the duplication in your code."},
    {266, 16, 2,
     u"Transaction count after EXECUTE indicates a mismatching number of BEGIN and COMMIT "
     u"statements. Previous count = %, current count = %."},
    {271, 16, 1,
     u"The column \"%\" cannot be modified because it is either a computed column or is the result "
     u"of a UNION operator."},
    {272, 16, 1, u"Cannot update a timestamp column."},
    {273, 16, 1,
     u"Cannot insert an explicit value into a timestamp column. Use INSERT with a column list to "
     u"exclude the timestamp column, or insert a DEFAULT into the timestamp column."},
    {281, 16, 1, u"% is not a valid style number when converting from % to a character string."},
    {289, 16, 1,
     u"Cannot construct data type %, some of the arguments have values which are not valid."},
    {295, 16, 3, u"Conversion failed when converting character string to smalldatetime data type."},
    {302, 16, 0,
     u"The newsequentialid() built-in function can only be used in a DEFAULT expression for a "
     u"column of type 'uniqueidentifier' in a CREATE TABLE or ALTER TABLE statement. It cannot be "
     u"combined with other operators to form a complex scalar expression."},
    {305, 16, 1,
     u"The XML data type cannot be compared or sorted, except when using the IS NULL operator."},
    {306, 16, 2,
     u"The text, ntext, and image data types cannot be compared or sorted, except when using IS "
     u"NULL or LIKE operator."},
    {310, 15, 1,
     u"The value % specified for the MAXRECURSION option exceeds the allowed maximum of 32767."},
    {319, 15, 1,
     u"Incorrect syntax near the keyword '%'. If this statement is a common table "
     u"expression, an xmlnamespaces clause or a change tracking context clause, the "
     u"previous statement must be terminated with a semicolon."},
    {402, 16, 1, u"The data types % and % are incompatible in the % operator."},
    {408, 16, 1, u"A constant expression was encountered in the ORDER BY list, position %."},
    {421, 16, 1, u"The % data type cannot be selected as DISTINCT because it is not comparable."},
    {447, 16, 0, u"Expression type % is invalid for COLLATE clause."},
    {448, 16, 1, u"Invalid collation '%'."},
    {449, 16, 1,
     u"Collation conflict caused by collate clauses with different collation '%' and '%'."},
    {451, 16, 1,
     u"Cannot resolve the collation conflict between \"%\" and \"%\" in % operator occurring in "
     u"% statement column %."},
    {460, 16, 1,
     u"DISTINCT operator is not allowed in the recursive part of a recursive common "
     u"table expression '%'."},
    {461, 16, 1,
     u"The TOP or OFFSET operator is not allowed in the recursive part of a recursive "
     u"common table expression '%'."},
    {462, 16, 1,
     u"Outer join is not allowed in the recursive part of a recursive common table "
     u"expression '%'."},
    {465, 16, 1, u"Recursive references are not allowed in subqueries."},
    {467, 16, 1,
     u"GROUP BY, HAVING, or aggregate functions are not allowed in the recursive part "
     u"of a recursive common table expression '%'."},
    {468, 16, 9,
     u"Cannot resolve the collation conflict between \"%\" and \"%\" in the % operation."},
    {506, 16, 1, u"The invalid escape character \"%\" was specified in a LIKE predicate."},
    {512, 16, 1,
     u"Subquery returned more than 1 value. This is not permitted when the subquery follows =, !=, "
     u"<, <= , >, >= or when the subquery is used as an expression."},
    {515, 16, 2,
     u"Cannot insert the value NULL into column '%', table '%'; column does not allow nulls. % "
     u"fails."},
    {517, 16, 1, u"Adding a value to a '%' column caused an overflow."},
    {529, 16, 2, u"Explicit conversion from data type % to % is not allowed."},
    {530, 16, 1,
     u"The statement terminated. The maximum recursion % has been exhausted before "
     u"statement completion."},
    {535, 16, 0,
     u"The % function resulted in an overflow. The number of dateparts separating two date/time "
     u"instances is too large. Try to use % with a less precise datepart."},
    {536, 16, 1, u"Invalid length parameter passed to the % function."},
    {537, 16, 2, u"Invalid length parameter passed to the LEFT or SUBSTRING function."},
    {544, 16, 1,
     u"Cannot insert explicit value for identity column in table '%' when IDENTITY_INSERT is set "
     u"to OFF."},
    {545, 16, 1,
     u"Explicit value must be specified for identity column in table '%' either when "
     u"IDENTITY_INSERT is set to ON or when a replication user is inserting into a NOT FOR "
     u"REPLICATION identity column."},
    {547, 16, 0,
     u"The % statement conflicted with the % constraint \"%\". The conflict occurred in database "
     u"\"%\", table \"%\"%."},
    {550, 16, 1,
     u"The attempted insert or update failed because the target view either specifies WITH CHECK "
     u"OPTION or spans a view that specifies WITH CHECK OPTION and one or more rows resulting from "
     u"the operation did not qualify under the CHECK OPTION constraint."},
    {628, 16, 1, u"Cannot issue SAVE TRANSACTION when there is no active transaction."},
    {701, 17, 123,
     u"There is insufficient system memory in resource pool 'default' to run this query."},
    {823, 24, 2,
     u"The operating system returned error % to SQL Server during a % at offset % in file '%'."},
    {911, 16, 1, u"Database '%' does not exist. Make sure that the name is entered correctly."},
    {945, 14, 2,
     u"Database '%' cannot be opened due to inaccessible files or insufficient memory or disk "
     u"space.  See the SQL Server errorlog for details."},
    {1001, 16, 1, u"Line %: Length or precision specification % is invalid."},
    {1002, 16, 1, u"Line %: Specified scale % is invalid."},
    {1011, 16, 1, u"The correlation name '%' is specified multiple times in a FROM clause."},
    {1013, 16, 1,
     u"The objects \"%\" and \"%\" in the FROM clause have the same exposed names. Use correlation "
     u"names to distinguish them."},
    {1023, 15, 1, u"Invalid parameter % specified for %."},
    {1026, 15, 1, u"GOTO cannot be used to jump into a TRY or CATCH scope."},
    {1031, 15, 1, u"Percent values must be between 0 and 100."},
    {1033, 15, 1,
     u"The ORDER BY clause is invalid in views, inline functions, derived tables, subqueries, and "
     u"common table expressions, unless TOP, OFFSET or FOR XML is also specified."},
    {1038, 15, 4,
     u"An object or column name is missing or empty. For SELECT INTO statements, verify each "
     u"column has a name. For other statements, look for empty alias names. Aliases defined as "
     u"\"\" or [] are not allowed. Change the alias to a valid name."},
    {1046, 15, 1,
     u"Subqueries are not allowed in this context. Only scalar expressions are allowed."},
    {1056, 15, 1,
     u"The number of elements in the select list exceeds the maximum allowed number of 4096 "
     u"elements."},
    {1060, 15, 1,
     u"The number of rows provided for a TOP or FETCH clauses row count parameter must be an "
     u"integer."},
    {1062, 15, 1,
     u"The TOP N WITH TIES clause is not allowed without a corresponding ORDER BY "
     u"clause."},
    {1087, 15, 2, u"Must declare the table variable \"%\"."},
    {1088, 16, 12,
     u"Cannot find the object \"%\" because it does not exist or you do not have permissions."},
    {1105, 17, 2,
     u"Could not allocate space for object '%' in database '%' because the '%' filegroup is full. "
     u"Create disk space by deleting unneeded files, dropping objects in the filegroup, adding "
     u"additional files to the filegroup, or setting autogrowth on for existing files in the "
     u"filegroup."},
    {1205, 13, 51,
     u"Transaction (Process ID %) was deadlocked on % resources with another process and has been "
     u"chosen as the deadlock victim. Rerun the transaction."},
    {1222, 16, 51, u"Lock request time out period exceeded."},
    {1505, 16, 1,
     u"The CREATE UNIQUE INDEX statement terminated because a duplicate key was found for the "
     u"object name '%' and the index name '%'. The duplicate key value is (%)."},
    {1702, 16, 1,
     u"CREATE TABLE failed because column '%' in table '%' exceeds the maximum of 1024 columns."},
    {1711, 16, 1,
     u"Cannot define PRIMARY KEY constraint on column '%' in table '%'. The computed column "
     u"has to be persisted and not nullable."},
    {1750, 16, 1, u"Could not create constraint or index. See previous errors."},
    {1752, 16, 0, u"Column '%' in table '%' is invalid for creating a default constraint."},
    {1753, 16, 0,
     u"Column '%' is not the same length or scale as referencing column '%' in foreign key "
     u"'%'. Columns participating in a foreign key relationship must be defined with the same "
     u"length and scale."},
    {1754, 16, 0,
     u"Defaults cannot be created on columns with an IDENTITY attribute. Table '%', column '%'."},
    {1755, 16, 0, u"Defaults cannot be created on columns of data type %. Table '%', column '%'."},
    {1759, 16, 0,
     u"Computed column '%' in table '%' is not allowed to be used in another computed-column "
     u"definition."},
    {1761, 16, 0,
     u"Cannot create the foreign key \"%\" with the SET NULL referential action, because one "
     u"or more referencing columns are not nullable."},
    {1762, 16, 0,
     u"Cannot create the foreign key \"%\" with the SET DEFAULT referential action, because "
     u"one or more referencing not-nullable columns lack a default constraint."},
    {1763, 16, 0, u"Cross-database foreign key references are not supported. Foreign key '%'."},
    {1764, 16, 1, u"Computed Column '%' is invalid for use in '%' because it is not persisted."},
    {1765, 16, 0,
     u"Foreign key '%' creation failed. Only NO ACTION and CASCADE referential delete actions "
     u"are allowed for referencing computed column '%'."},
    {1767, 16, 0, u"Foreign key '%' references invalid table '%'."},
    {1768, 16, 0, u"Foreign key '%' references object '%' which is not a user table."},
    {1769, 16, 1, u"Foreign key '%' references invalid column '%' in referencing table '%'."},
    {1770, 16, 1, u"Foreign key '%' references invalid column '%' in referenced table '%'."},
    {1773, 16, 0,
     u"Foreign key '%' has implicit reference to object '%' which does not have a primary key "
     u"defined on it."},
    {1774, 16, 0,
     u"The number of columns in the referencing column list for foreign key '%' does not match "
     u"those of the primary key in the referenced table '%'."},
    {1776, 16, 0,
     u"There are no primary or candidate keys in the referenced table '%' that match the "
     u"referencing column list in the foreign key '%'."},
    {1778, 16, 0,
     u"Column '%' is not the same data type as referencing column '%' in foreign key '%'."},
    {1779, 16, 0, u"Table '%' already has a primary key defined on it."},
    {1781, 16, 1, u"Column already has a DEFAULT bound to it."},
    {1785, 16, 0,
     u"Introducing FOREIGN KEY constraint '%' on table '%' may cause cycles or multiple "
     u"cascade paths. Specify ON DELETE NO ACTION or ON UPDATE NO ACTION, or modify other "
     u"FOREIGN KEY constraints."},
    {1801, 16, 3, u"Database '%' already exists. Choose a different database name."},
    {1902, 16, 3,
     u"Cannot create more than one clustered index on table '%'. Drop the existing clustered index "
     u"'%' before creating another."},
    {1909, 16, 1,
     u"Cannot use duplicate column names in index. Column name '%' listed more than once."},
    {1911, 16, 1, u"Column name '%' does not exist in the target table or view."},
    {1913, 16, 1,
     u"The operation failed because an index or statistics with name '%' already exists on table "
     u"'%'."},
    {1919, 16, 1,
     u"Column '%' in table '%' is of a type that is invalid for use as a key column in an index."},
    {2010, 16, 1, u"Cannot perform alter on '%' because it is an incompatible object type."},
    {2209, 16, 1, u"%: Syntax error near '%'"},
    {2601, 14, 1,
     u"Cannot insert duplicate key row in object '%' with unique index '%'. The duplicate key "
     u"value is (%)."},
    {2627, 14, 1,
     u"Violation of % constraint '%'. Cannot insert duplicate key in object '%'. The duplicate key "
     u"value is (%)."},
    {2628, 16, 1,
     u"String or binary data would be truncated in table '%', column '%'. Truncated value: '%'."},
    {2702, 16, 2, u"Database '%' does not exist."},
    {2705, 16, 3,
     u"Column names in each table must be unique. Column name '%' in table '%' is specified more "
     u"than once."},
    {2714, 16, 6, u"There is already an object named '%' in the database."},
    {2715, 16, 6, u"Column, parameter, or variable #%: Cannot find data type %."},
    {2716, 16, 1,
     u"Column, parameter, or variable #%: Cannot specify a column width on data type %."},
    {2717, 15, 2, u"The size (%) given to the % '%' exceeds the maximum allowed (%)."},
    {2727, 11, 1, u"Cannot find index '%'."},
    {2729, 16, 1,
     u"Column '%' in table '%' cannot be used in an index or statistics or as a partition key "
     u"because it is non-deterministic."},
    {2732, 16, 1,
     u"Error number % is invalid. The number must be from % through % and it cannot be 50000."},
    {2738, 16, 2,
     u"A table can only have one timestamp column. Because table '%' already has one, the column "
     u"'%' cannot be added."},
    {2739, 16, 1, u"The text, ntext, and image data types are invalid for local variables."},
    {2741, 16, 1, u"SET DATEFORMAT date order '%' is invalid."},
    {2742, 16, 1, u"SET DATEFIRST % is out of range."},
    {2744, 16, 2,
     u"Multiple identity columns specified for table '%'. Only one identity column per table is "
     u"allowed."},
    {2745, 16, 2,
     u"Process ID % has raised user error %, severity %. SQL Server is terminating this process."},
    {2747, 16, 1,
     u"Too many substitution parameters for RAISERROR. Cannot exceed % substitution parameters."},
    {2748, 16, 1, u"Cannot specify % data type (parameter %) as a substitution parameter."},
    {2749, 16, 2,
     u"Identity column '%' must be of data type int, bigint, smallint, tinyint, or decimal or "
     u"numeric with a scale of 0, unencrypted, and constrained to be nonnullable."},
    {2750, 16, 1,
     u"Column or parameter #%: Specified column precision % is greater than the maximum precision "
     u"of %."},
    {2751, 16, 1,
     u"Column or parameter #%: Specified column scale % is greater than the specified precision of "
     u"%."},
    {2754, 16, 1,
     u"Error severity levels greater than % can only be specified by members of the sysadmin role, "
     u"using the WITH LOG option."},
    {2759, 16, 0, u"CREATE SCHEMA failed due to previous errors."},
    {2760, 16, 1,
     u"The specified schema name \"%\" either does not exist or you do not have permission to use "
     u"it."},
    {2761, 16, 1,
     u"The ROWGUIDCOL property can only be specified on the uniqueidentifier data type."},
    {2786, 16, 1,
     u"The data type of substitution parameter % does not match the expected type of the format "
     u"specification."},
    {2787, 16, 1, u"Invalid format specification: '%'."},
    {2812, 16, 62, u"Could not find stored procedure '%'."},
    {3621, 0, 0, u"The statement has been terminated."},
    {3623, 16, 1, u"An invalid floating point operation occurred."},
    {3701, 11, 5, u"Cannot % the % '%', because it does not exist or you do not have permission."},
    {3702, 16, 3, u"Cannot drop database \"%\" because it is currently in use."},
    {3704, 16, 1, u"User does not have permission to perform this operation on %."},
    {3705, 16, 1, u"Cannot use DROP % with '%' because '%' is a %. Use DROP %."},
    {3708, 16, 1, u"Cannot % the % '%' because it is a system %."},
    {3723, 16, 4,
     u"An explicit DROP INDEX is not allowed on index '%'. It is being used for % constraint "
     u"enforcement."},
    {3725, 16, 0,
     u"The constraint '%' is being referenced by table '%', foreign key constraint '%'."},
    {3726, 16, 1,
     u"Could not drop object '%' because it is referenced by a FOREIGN KEY constraint."},
    {3727, 16, 0, u"Could not drop constraint. See previous errors."},
    {3728, 16, 1, u"'%' is not a constraint."},
    {3729, 16, 1, u"Cannot % '%' because it is being referenced by object '%'."},
    {3732, 16, 1,
     u"Cannot drop type '%' because it is being referenced by object '%'. There may be other "
     u"objects that reference this type."},
    {3733, 16, 2, u"Constraint '%' does not belong to table '%'."},
    {3902, 16, 1, u"The COMMIT TRANSACTION request has no corresponding BEGIN TRANSACTION."},
    {3903, 16, 1, u"The ROLLBACK TRANSACTION request has no corresponding BEGIN TRANSACTION."},
    {3915, 16, 0, u"Cannot use the ROLLBACK statement within an INSERT-EXEC statement."},
    {3916, 16, 0,
     u"Cannot use the COMMIT statement within an INSERT-EXEC statement unless BEGIN TRANSACTION is "
     u"used first."},
    {3930, 16, 1,
     u"The current transaction cannot be committed and cannot support operations that write to the "
     u"log file. Roll back the transaction."},
    {3931, 16, 1,
     u"The current transaction cannot be committed and cannot be rolled back to a savepoint. Roll "
     u"back the entire transaction."},
    {3998, 16, 1,
     u"Uncommittable transaction is detected at the end of the batch. The transaction is rolled "
     u"back."},
    {4002, 16, 1, u"The incoming tabular data stream (TDS) protocol stream is incorrect: %."},
    {4060, 11, 1, u"Cannot open database \"%\" requested by the login. The login failed."},
    {4104, 16, 1, u"The multi-part identifier \"%\" could not be bound."},
    {4108, 15, 1, u"Windowed functions can only appear in the SELECT or ORDER BY clauses."},
    {4109, 15, 1,
     u"Windowed functions cannot be used in the context of another windowed function "
     u"or aggregate."},
    {4112, 15, 1, u"The function '%' must have an OVER clause with ORDER BY."},
    {4113, 16, 1,
     u"The function '%' is not a valid windowing function, and cannot be used with the "
     u"OVER clause."},
    {4116, 16, 1,
     u"The function 'ntile' takes only a positive int or bigint expression as its "
     u"input."},
    {4127, 16, 1,
     u"At least one of the arguments to COALESCE must be an expression that is not the NULL "
     u"constant."},
    {4145, 15, 1,
     u"An expression of non-boolean type specified in a context where a condition is expected, "
     u"near '%'."},
    {4151, 16, 1,
     u"The type of the first argument to NULLIF cannot be the NULL constant because the type of "
     u"the "
     u"first argument has to be known."},
    {4194, 16, 1,
     u"RANGE is only supported with UNBOUNDED and CURRENT ROW window frame delimiters."},
    {4199, 16, 1, u"Argument value % is invalid for argument % of % function."},
    {4403, 16, 1,
     u"Cannot update the view or function '%' because it contains aggregates, or a DISTINCT or "
     u"GROUP "
     u"BY clause, or PIVOT or UNPIVOT operator."},
    {4405, 16, 1,
     u"View or function '%' is not updatable because the modification affects multiple base "
     u"tables."},
    {4406, 16, 1,
     u"Update or insert of view or function '%' failed because it contains a derived or constant "
     u"field."},
    {4426, 16, 1, u"View '%' is not updatable because the definition contains a UNION operator."},
    {4502, 16, 1, u"View or function '%' has more column names specified than columns defined."},
    {4506, 16, 1,
     u"Column names in each view or function must be unique. Column name '%' in view or function "
     u"'%' is specified more than once."},
    {4511, 16, 1,
     u"Create View or Function failed because no column name was specified for column %."},
    {4701, 16, 1,
     u"Cannot find the object \"%\" because it does not exist or you do not have permissions."},
    {4708, 16, 1, u"Cannot truncate table '%' because it is not a table."},
    {4712, 16, 1,
     u"Cannot truncate table '%' because it is being referenced by a FOREIGN KEY constraint."},
    {4901, 16, 1,
     u"ALTER TABLE only allows columns to be added that can contain nulls, or have a DEFAULT "
     u"definition specified, or the column being added is an identity or timestamp column, or "
     u"alternatively if none of the previous conditions are satisfied the table must be empty "
     u"to allow addition of this column. Column '%' cannot be added to non-empty table '%' "
     u"because it does not satisfy these conditions."},
    {4902, 16, 1,
     u"Cannot find the object \"%\" because it does not exist or you do not have permissions."},
    {4909, 16, 1, u"Cannot alter '%' because it is not a table."},
    {4916, 16, 0, u"Could not enable or disable the constraint. See previous errors."},
    {4917, 16, 0, u"Constraint '%' does not exist."},
    {4922, 16, 9, u"% % failed because one or more objects access this column."},
    {4923, 16, 1,
     u"ALTER TABLE DROP COLUMN failed because '%' is the only data column in table '%'. A "
     u"table must have at least one data column."},
    {4924, 16, 1, u"% failed because column '%' does not exist in table '%'."},
    {4925, 16, 1,
     u"ALTER TABLE ALTER COLUMN ADD ROWGUIDCOL failed because a column already exists in table "
     u"'%' with ROWGUIDCOL property."},
    {4927, 16, 1, u"Cannot alter column '%' to be data type timestamp."},
    {4928, 16, 1, u"Cannot alter column '%' because it is '%'."},
    {4936, 16, 1,
     u"Computed column '%' in table '%' cannot be persisted because the column is "
     u"non-deterministic."},
    {5011, 14, 5,
     u"User does not have permission to alter database '%', the database does not exist, or the "
     u"database is not in a state that allows access checks."},
    {5030, 16, 12, u"The database could not be exclusively locked to perform the operation."},
    {5069, 16, 1, u"ALTER DATABASE statement failed."},
    {5074, 16, 1, u"The % '%' is dependent on %."},
    {5308, 16, 1,
     u"Windowed functions, aggregates and NEXT VALUE FOR functions do not support "
     u"integer indices as ORDER BY clause expressions."},
    {5309, 16, 1,
     u"Windowed functions, aggregates and NEXT VALUE FOR functions do not support "
     u"constants as ORDER BY clause expressions."},
    {5335, 16, 1,
     u"The data type % cannot be used as an operand to the UNION, INTERSECT or EXCEPT operators "
     u"because it is not comparable."},
    {5373, 16, 1,
     u"All the input parameters should be of the same type. Supported types are tinyint, smallint, "
     u"int, bigint, decimal and numeric."},
    {5701, 10, 2, u"Changed database context to '%'."},
    {5703, 10, 1, u"Changed language setting to %."},
    {6401, 16, 1, u"Cannot roll back %. No transaction or savepoint of that name was found."},
    {8007, 16, 1, u"Procedure expects parameter '%' of type '%'."},
    {8009, 16, 1,
     u"The incoming tabular data stream (TDS) remote procedure call (RPC) protocol stream is "
     u"incorrect: %."},
    {8101, 16, 1,
     u"An explicit value for the identity column in table '%' can only be specified when a column "
     u"list is used and IDENTITY_INSERT is ON."},
    {8102, 16, 1, u"Cannot update identity column '%'."},
    {8106, 16, 1, u"Table '%' does not have the identity property. Cannot perform SET operation."},
    {8107, 16, 1,
     u"IDENTITY_INSERT is already ON for table '%'. Cannot perform SET operation for table '%'."},
    {8110, 16, 0, u"Cannot add multiple PRIMARY KEY constraints to table '%'."},
    {8111, 16, 1, u"Cannot define PRIMARY KEY constraint on nullable column in table '%'."},
    {8112, 16, 0, u"Cannot add more than one clustered index for constraints on table '%'."},
    {8114, 16, 5, u"Error converting data type % to %."},
    {8115, 16, 2, u"Arithmetic overflow error converting % to data type %."},
    {8116, 16, 1, u"Argument data type % is invalid for argument % of % function."},
    {8117, 16, 1, u"Operand data type % is invalid for % operator."},
    {8120, 16, 1,
     u"Column '%' is invalid in the select list because it is not contained in either an aggregate "
     u"function or the GROUP BY clause."},
    {8121, 16, 1,
     u"Column '%' is invalid in the HAVING clause because it is not contained in either an "
     u"aggregate function or the GROUP BY clause."},
    {8127, 16, 1,
     u"Column \"%\" is invalid in the ORDER BY clause because it is not contained in either an "
     u"aggregate function or the GROUP BY clause."},
    {8133, 16, 1,
     u"At least one of the result expressions in a CASE specification must be an expression other "
     u"than the NULL constant."},
    {8134, 16, 1, u"Divide by zero error encountered."},
    {8139, 16, 0,
     u"Number of referencing columns in foreign key differs from number of referenced columns, "
     u"table '%'."},
    {8141, 16, 0, u"Column CHECK constraint for column '%' references another column, table '%'."},
    {8143, 16, 1, u"Parameter '%' was supplied multiple times."},
    {8144, 16, 2, u"Procedure or function % has too many arguments specified."},
    {8145, 16, 1, u"% is not a parameter for procedure %."},
    {8147, 16, 1, u"Could not create IDENTITY attribute on nullable column '%', table '%'."},
    {8154, 15, 1, u"The table '%' is ambiguous."},
    {8155, 16, 2, u"No column name was specified for column % of '%'."},
    {8156, 16, 1, u"The column '%' was specified multiple times for '%'."},
    {8158, 16, 1, u"'%' has more columns than were specified in the column list."},
    {8159, 16, 1, u"'%' has fewer columns than were specified in the column list."},
    {8161, 16, 1,
     u"Argument % of the % function does not match any of the expressions in the GROUP "
     u"BY clause."},
    {8162, 16, 2,
     u"The formal parameter \"%\" was not declared as an OUTPUT parameter, but the actual "
     u"parameter "
     u"passed in requested output."},
    {8164, 16, 1, u"An INSERT EXEC statement cannot be nested."},
    {8169, 16, 2,
     u"Conversion failed when converting from a character string to uniqueidentifier."},
    {8170, 16, 2, u"Insufficient result space to convert uniqueidentifier value to char."},
    {8179, 16, 2, u"Could not find prepared statement with handle %."},
    {8623, 16, 1,
     u"The query processor ran out of internal resources and could not produce a query plan. This "
     u"is a rare event and only expected for extremely complex queries or queries that reference a "
     u"very large number of tables or partitions. Please simplify the query."},
    {8730, 16, 1, u"Offset parameter for Lag and Lead functions cannot be a negative value."},
    {8748, 16, 1,
     u"The enable_ordinal argument for string_split only supports constant values (not variables "
     u"or "
     u"columns)."},
    {9806, 16, 1, u"The datepart % is not supported by date function %."},
    {9809, 16, 1, u"The style % is not supported for conversions from % to %."},
    {9810, 16, 1, u"The datepart % is not supported by date function % for data type %."},
    {9812, 16, 1, u"The timezone provided to builtin function is invalid."},
    {9815, 16, 1, u"Waitfor delay and waitfor time cannot be of type %."},
    {9828, 16, 1,
     u"The second and third arguments of the TRANSLATE built-in function must contain an equal "
     u"number of "
     u"characters."},
    {9829, 16, 1,
     u"STRING_AGG aggregation result exceeded the limit of 8000 bytes. Use LOB types "
     u"to avoid result truncation."},
    {9834, 16, 1,
     u"Invalid bucket width value passed to date_bucket function. Only positive values are "
     u"allowed."},
    {10601, 16, 1, u"Cannot specify included columns for a clustered index."},
    {10609, 16, 1, u"Filtered index '%' cannot be created on table '%' because it is clustered."},
    {10704, 15, 1,
     u"To rethrow an error, a THROW statement must be used inside a CATCH block. Insert the THROW "
     u"statement inside a CATCH block, or add error parameters to the THROW statement."},
    {10705, 15, 1, u"Subqueries are not allowed in the OUTPUT clause."},
    {10709, 16, 1,
     u"The number of columns for each row in a table value constructor must be the "
     u"same."},
    {10735, 15, 1, u"Incorrect WHERE clause for filtered index '%' on table '%'."},
    {10738, 15, 1,
     u"The number of row value expressions in the INSERT statement exceeds the maximum allowed "
     u"number of 1000 row values."},
    {10741, 15, 2, u"A TOP can not be used in the same query or sub-query as a OFFSET."},
    {10742, 15, 1, u"The offset specified in a OFFSET clause may not be negative."},
    {10744, 15, 1, u"The number of rows provided for a FETCH clause must be greater then zero."},
    {10752, 15, 1, u"The function '%' may not have a window frame."},
    {10753, 15, 1, u"The function '%' must have an OVER clause."},
    {10756, 15, 1, u"Window frame with ROWS or RANGE must have an ORDER BY clause."},
    {10757, 15, 1, u"The function '%' may not have a WITHIN GROUP clause."},
    {10759, 15, 1, u"Use of DISTINCT is not allowed with the OVER clause."},
    {10760, 16, 1,
     u"Scale argument is not valid. Valid expressions for data type % scale argument are integer "
     u"constants and integer constant expressions."},
    {11415, 16, 1,
     u"Object '%' cannot be disabled or enabled. This action applies only to foreign key and check "
     u"constraints."},
    {15007, 16, 1, u"'%' is not a valid login or you do not have permission."},
    {15009, 16, 1,
     u"The object '%' does not exist in database '%' or is invalid for this operation."},
    {15010, 16, 1,
     u"The database '%' does not exist. Supply a valid database name. To see available databases, "
     u"use sys.databases."},
    {15036, 16, 1, u"The data type '%' does not exist or you do not have permission."},
    {15070, 0, 1, u"Object '%' was successfully marked for recompilation."},
    {15150, 16, 1, u"Cannot % the % '%'."},
    {15151, 16, 1, u"Cannot % the % '%', because it does not exist or you do not have permission."},
    {15165, 16, 1, u"Could not find object '%' or you do not have permission."},
    {15197, 16, 1, u"There is no text for object '%'."},
    {15218, 16, 1, u"Object '%' is not a table."},
    {15223, 11, 1, u"Error: The input parameter '%' is not allowed to be null."},
    {15225, 11, 1,
     u"No item by the name of '%' could be found in the current database '%', given that "
     u"@itemtype was input as '%'."},
    {15248, 11, 1,
     u"Either the parameter @objname is ambiguous or the claimed @objtype (%) is wrong."},
    {15249, 11, 1, u"Error: Explicit @itemtype '%' is unrecognized (%)."},
    {15250, 16, 1,
     u"The database name component of the object qualifier must be the name of the current "
     u"database."},
    {15252, 16, 1, u"The primary or foreign key table name must be given."},
    {15335, 11, 1,
     u"Error: The new name '%' is already in use as a % name and would cause a duplicate that "
     u"is not permitted."},
    {15336, 16, 1,
     u"Object '%' cannot be renamed because the object participates in enforced dependencies."},
    {15347, 16, 1, u"Cannot transfer an object that is owned by a parent object."},
    {15348, 16, 1, u"Cannot transfer a schemabound object."},
    {15469, 10, 1, u"No constraints are defined on object '%', or you do not have permissions."},
    {15470, 10, 1,
     u"No foreign keys reference table '%', or you do not have permissions on referencing tables."},
    {15472, 10, 1, u"The object '%' does not have any indexes, or you do not have permissions."},
    {15477, 10, 1,
     u"Caution: Changing any part of an object name could break scripts and stored procedures."},
    {15530, 16, 1, u"The object with name \"%\" already exists."},
    {15600, 15, 1, u"An invalid parameter or option was specified for procedure '%'."},
    {15645, 16, 1, u"Column '%' does not exist."},
    {15646, 16, 1, u"Column '%' is not a computed column."},
    {15647, 10, 1, u"No views with schema binding reference table '%'."},
    {17809, 20, 1,
     u"Could not connect because the maximum number of '%' user connections has already been "
     u"reached."},
    {18054, 16, 1,
     u"Error %, severity %, state % was raised, but no message with that error number was found in "
     u"sys.messages. If error is larger than 50000, make sure the user-defined message is added "
     u"using sp_addmessage."},
    {18452, 14, 1,
     u"Login failed. The login is from an untrusted domain and cannot be used with Integrated "
     u"authentication."},
    {18456, 14, 1, u"Login failed for user '%'."},
    {35100, 16, 10,
     u"Error number % in the THROW statement is outside the valid range. Specify an error number "
     u"in the valid range of 50000 to 2147483647."},
    {40515, 16, 1,
     u"Reference to database and/or server name in '%' is not supported in this version of SQL "
     u"Server."},
    {40517, 16, 1,
     u"Keyword or statement option '%' is not supported in this version of SQL Server."},
    {50000, 16, 1, u"%"},
};

constexpr bool IsBefore(const MessageText& entry, int number) {
    return entry.number < number;
}

// Searching halves the table, so its order is checked where it is compiled.
static_assert(std::adjacent_find(std::begin(Table), std::end(Table),
                                 [](const MessageText& entry, const MessageText& next) {
                                     return !IsBefore(entry, next.number);
                                 }) == std::end(Table),
              "the messages stand in the order of their numbers, each once");

}  // namespace

const MessageText* LookUpMessage(int number) {
    const auto* found = std::lower_bound(std::begin(Table), std::end(Table), number, IsBefore);
    return found != std::end(Table) && found->number == number ? found : nullptr;
}

const MessageText& FindMessage(int number) {
    const MessageText* found = LookUpMessage(number);
    return found ? *found : Table[std::size(Table) - 1];
}

QString FillMessage(const MessageText& message, const QStringList& inserts) {
    QString text;
    qsizetype insert = 0;
    for (const QChar unit : QStringView(message.text)) {
        if (unit != u'%') {
            text += unit;
            continue;
        }
        if (insert < inserts.size()) text += inserts[insert];
        ++insert;
    }
    return text;
}

}  // namespace quarv::localdb::engine
