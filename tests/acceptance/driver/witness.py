"""What another client hears from the server, put as Quarv's main window shows it: the other side of
every comparison."""

from .server import quoted

MONTHS = "Jan Feb Mar Apr May Jun Jul Aug Sep Oct Nov Dec".split()
NO_INDEXES = "Msg 15472"

# How the server is asked for a column by its type, where its plain text is not what is shown.
# Dates and times: in ISO form, cut after the seconds.
MOMENTS = {"date": 10, "datetime": 19, "smalldatetime": 19, "datetime2": 19}
OTHER = {
    "time": "left(convert(varchar(30), {0}, 121), 8)",
    "datetimeoffset": "left(convert(varchar(40), {0}, 121), 19) + "
                      "right(convert(varchar(40), {0}, 121), 7)",
    "bit": "case {0} when 1 then 'True' when 0 then 'False' end",
    "real": "upper(convert(varchar(40), {0}, 3))",
    "float": "upper(convert(varchar(40), {0}, 3))",
    "money": "convert(varchar(40), {0}, 2)",
    "smallmoney": "convert(varchar(40), {0}, 2)",
    **dict.fromkeys(("binary", "varbinary", "image", "timestamp"),
                    "convert(varchar(max), convert(varbinary(max), {0}), 1)"),
}


class Witness:
    """Asks through tsql, past Quarv and whatever stands between it and the server."""

    def __init__(self, tsql):
        self.tsql = tsql

    def run(self, sql):
        return self.tsql.run(sql)

    def tables(self):
        return self.tsql.tables()

    def procedures(self):
        return self.tsql.procedures()

    def columns(self, table):
        return self.tsql.columns(table)

    def names(self, table):
        """The names of a table's columns."""
        return tuple(column[0] for column in self.columns(table))

    def rows(self, table, condition=""):
        """The first hundred rows of a table, as shown."""
        types = self.tsql.rows("select column_name, data_type from information_schema.columns "
                               f"where table_name={quoted(table)} order by ordinal_position")
        asked = ", ".join(_question(name, kind) for name, kind in types)
        where = f" where {condition}" if condition else ""
        rows = self.tsql.rows(f"select top 100 {asked} from [{table}]{where}")
        dated = {place for place, (_, kind) in enumerate(types)
                 if kind in MOMENTS or kind == "datetimeoffset"}
        return [tuple(shown_moment(cell) if place in dated else cell
                      for place, cell in enumerate(row)) for row in rows]

    def script(self, table):
        """The CREATE TABLE script of a table."""
        lines = [f"   {name} {_script_type(kind)}" + (" NULL" if nullable else "")
                 for name, kind, nullable, _ in self.columns(table)]
        return f"CREATE TABLE {table} (\n" + ",\n".join(lines) + "\n)\n"

    def indexes(self, table):
        """A table's indexes as the pane shows them: name, fields and the rest."""
        question = f"exec sp_helpindex {quoted(table)}"
        if NO_INDEXES in self.run(question)[1]:
            return []
        return [(name, keys, rest) for name, rest, keys in self.tsql.rows(question)]

    def procedure(self, name):
        """The caption of a procedure's pane."""
        [(schema, created)] = self.tsql.rows(
            "select routine_schema, convert(varchar(19), created, 120) from "
            f"information_schema.routines where routine_name={quoted(name)}")
        return f"{schema}.{name}, created {shown_moment(created)}"

    def parameters(self, name):
        names = [row[0] for row in self.tsql.rows(f"exec sp_help {quoted(name)}")
                 if row[0].startswith("@")]
        return ", ".join(names) or "No parameters"

    def source(self, name):
        [(text, _)] = self.tsql.rows(
            "select replace(routine_definition, char(10), char(1)), 1 from "
            f"information_schema.routines where routine_name={quoted(name)}")
        return text.replace("\x01", "\n").strip(" ")

    def dump(self):
        """Everything that there is in the database: the rows of each table and view, and how each
        object was made, by name."""
        asked = {"objects": "select name, type, convert(varchar(30), create_date, 121), "
                            "convert(varchar(30), modify_date, 121) from sys.objects"}
        for name in self.tables():
            asked[name] = (f"select * from [{name}]\n"
                           "select * from information_schema.columns where table_name="
                           f"{quoted(name)}\nexec sp_helpindex {quoted(name)}")
        for name in self.procedures():
            asked[name] = f"exec sp_help {quoted(name)}\nexec sp_helptext {quoted(name)}"
        return {name: self.run(sql) for name, sql in asked.items()}


def changed(before, after):
    """The names under which two dumps differ."""
    return sorted(name for name in before.keys() | after.keys()
                  if before.get(name) != after.get(name))


def shown_moment(text):
    """A date, with or without a time, in the short form of the C locale."""
    if text == "NULL":
        return text
    date, _, rest = text.partition(" ")
    year, month, day = date.split("-")
    return f"{int(day)} {MONTHS[int(month) - 1]} {year}" + (f" {rest}" if rest else "")


def _question(name, kind):
    column = f"[{name}]"
    if kind in MOMENTS:
        return f"left(convert(varchar(30), {column}, 121), {MOMENTS[kind]})"
    return OTHER.get(kind, "{0}").format(column)


def _script_type(shown):
    """A type of the person's own is scripted by its name and the blank behind it."""
    return shown[:shown.index(" ") + 1] if shown.endswith("]") else shown
