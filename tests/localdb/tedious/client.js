// client.js PROGRAM: what tedious sees of quarv-localdb. Each check says what it expects; all run,
// and the first failure decides the exit status.
'use strict';

const assert = require('node:assert/strict');
const { TYPES, ISOLATION_LEVEL } = require('tedious');
const { Server } = require('./server.js');
const { Session } = require('./session.js');
const { Columns, Parameters } = require('./types.js');

const checks = [];
const check = (name, run) => checks.push({ name, run });

// The rows of an answer's only result, without errors.
function rows(answer) {
    assert.deepEqual(answer.errors.map((e) => `${e.number}: ${e.message}`), []);
    assert.equal(answer.results.length, 1);
    return answer.results[0].rows;
}
const value = (answer) => rows(answer)[0][0];

check('a wrong password is refused', async (session, target) => {
    await assert.rejects(Session.open({ ...target, password: 'wrong' }),
        { code: 'ELOGIN', message: "Login failed for user 'tester'." });
});

check('an unknown database is refused', async (session, target) => {
    await assert.rejects(Session.open(target, { database: 'nowhere' }), { code: 'ELOGIN' });
});

check('the catalogue procedures answer', async (session) => {
    const info = await session.query('exec sp_server_info 2');
    assert.deepEqual(info.results[0].names,
        ['ATTRIBUTE_ID', 'ATTRIBUTE_NAME', 'ATTRIBUTE_VALUE']);
    assert.deepEqual(rows(info)[0].slice(0, 2), [2, 'DBMS_VER']);
    const tables = rows(await session.call('sp_tables'));
    assert.ok(tables.some((t) => t[2] === 'Order Details' && t[3] === 'TABLE'));
    const procedures = await session.call('sp_stored_procedures');
    assert.equal(procedures.results[0].names[2], 'PROCEDURE_NAME');
    assert.equal(procedures.status, 0);
    const keys = rows(await session.call('sp_pkeys', (request) =>
        request.addParameter('table_name', TYPES.NVarChar, 'Products')));
    assert.deepEqual(keys.map((k) => k[3]), ['ProductID']);
});

check('the queries of the catalogue panes answer', async (session) => {
    const columns = rows(await session.batch('select * from information_schema.columns ' +
        "where table_name='Products' order by ordinal_position"));
    assert.equal(columns[0][3], 'ProductID');
    assert.equal(columns[1][7], 'nvarchar');
    const indexes = rows(await session.batch("sp_helpindex 'Products'"));
    assert.ok(indexes.some((i) => i[0] === 'PK_Products' && i[2] === 'ProductID'));
    const routines = await session.batch(
        "select * from information_schema.routines where routine_name= ''");
    assert.deepEqual(rows(routines), []);
});

check('every type is read back exactly', async (session) => {
    for (const [type, expression, expected] of Columns) {
        const answer = await session.batch(`select cast(${expression} as ${type}) v`);
        assert.deepEqual(value(answer), expected, `${type} of ${expression}`);
        const none = await session.batch(`select cast(null as ${type}) v`);
        assert.equal(value(none), null, `null ${type}`);
    }
});

check('every type survives a table', async (session) => {
    const list = Columns.map(([type], i) => `c${i} ${type} null`).join(', ');
    const values = Columns.map(([, expression]) => expression).join(', ');
    await session.batch(`create table every_type (${list})`);
    const inserted = await session.batch(`insert into every_type values (${values})`);
    assert.deepEqual(inserted.errors.map((e) => e.message), []);
    const row = rows(await session.batch('select * from every_type'))[0];
    Columns.forEach(([type, , expected], i) => assert.deepEqual(row[i], expected, type));
    await session.batch('drop table every_type');
});

check('every type goes in as a parameter', async (session) => {
    for (const [type, sent, options] of Parameters) {
        const answer = await session.query('select @p v', (request) =>
            request.addParameter('p', TYPES[type], sent, options));
        assert.deepEqual(value(answer), sent, type);
        const none = await session.query('select @p v', (request) =>
            request.addParameter('p', TYPES[type], null, options));
        assert.equal(value(none), null, `null ${type}`);
    }
});

check('errors keep number, state, class, line and procedure', async (session) => {
    const { errors, results } = await session.batch('select 1 a\nselect * from nowhere');
    assert.equal(results[0].rows.length, 1);
    assert.deepEqual([errors[0].number, errors[0].state, errors[0].class, errors[0].lineNumber],
        [208, 1, 16, 2]);
    assert.equal(errors[0].message, "Invalid object name 'nowhere'.");
});

check('messages and several results keep their order', async (session) => {
    const answer = await session.batch("print 'one' select 1 a select 'two' b, 3 c");
    assert.equal(answer.messages[0].message, 'one');
    assert.deepEqual(answer.results.map((r) => r.rows), [[[1]], [['two', 3]]]);
});

check('output parameters and the return status come back', async (session) => {
    await session.batch('create procedure twice @n int, @m int output as\n' +
        'begin set @m = 2 * @n return 7 end');
    const answer = await session.call('twice', (request) => {
        request.addParameter('n', TYPES.Int, 21);
        request.addOutputParameter('m', TYPES.Int);
    });
    assert.deepEqual(answer.errors, []);
    assert.deepEqual([answer.outputs.m, answer.status], [42, 7]);
    await session.batch('drop procedure twice');
});

check('a prepared statement runs again and again', async (session) => {
    const { Request } = require('tedious');
    const found = [];
    const run = (request, values) => new Promise((resolve, reject) => {
        request.callback = (error) => (error ? reject(error) : resolve());
        if (values) session.connection.execute(request, values);
        else session.connection.prepare(request);
    });
    const request = new Request('select @n * 2 v', () => {});
    request.addParameter('n', TYPES.Int);
    request.on('row', (row) => found.push(row[0].value));
    await new Promise((resolve) => {
        request.on('prepared', resolve);
        session.connection.prepare(request);
    });
    for (const n of [1, 20, 300]) await run(request, { n });
    assert.deepEqual(found, [2, 40, 600]);
    await new Promise((resolve) => {
        request.callback = resolve;
        session.connection.unprepare(request);
    });
});

check('a running statement is cancelled and the session goes on', async (session) => {
    const endless = await session.stopped('while 1 = 1 set rowcount 0', false);
    assert.equal(endless.errors[0].code, 'ECANCEL');
    assert.equal(value(await session.batch('select 1')), 1);
    const many = 'select a.ProductID from Products a, Products b, Products c, Products d, ' +
        'Products e, Products f';
    const rowsBegun = await session.stopped(many, true);
    assert.equal(rowsBegun.errors[0].code, 'ECANCEL');
    assert.equal(value(await session.batch('select 2')), 2);
});

check('transaction requests commit, roll back and save', async (session) => {
    await session.batch('create table kept (id int not null primary key)');
    const put = (id) => session.batch(`insert into kept values (${id})`);
    const ids = async () => rows(await session.batch('select id from kept order by id'))
        .map((r) => r[0]);
    await session.transaction('begin', 'outer', ISOLATION_LEVEL.SERIALIZABLE);
    await put(1);
    await session.transaction('save', 'half');
    await put(2);
    await session.transaction('rollback', 'half');
    assert.equal(value(await session.batch('select @@trancount')), 1);
    await session.transaction('commit', 'outer');
    assert.deepEqual(await ids(), [1]);
    await session.transaction('begin');
    await put(3);
    await session.transaction('rollback');
    assert.deepEqual(await ids(), [1]);
    await session.batch('drop table kept');
});

check('what one session commits another one sees', async (session, target) => {
    const other = await Session.open(target);
    await session.batch('create table shared (id int)');
    await session.transaction('begin');
    await session.batch('insert into shared values (1)');
    await session.transaction('commit');
    assert.equal(value(await other.batch('select count(*) from shared')), 1);
    await other.batch('drop table shared');
    await other.close();
});

check('the program and the machine are known by name', async (session, target) => {
    const named = await Session.open(target, { appName: 'Checks', workstationId: 'desk' });
    assert.deepEqual(rows(await named.batch('select app_name(), host_name()')),
        [['Checks', 'desk']]);
    await named.close();
});

check('a reset leaves a session as after its login', async (session) => {
    await session.batch('begin transaction');
    await session.reset();
    assert.equal(value(await session.batch('select @@trancount')), 0);
    assert.equal(value(await session.batch('select db_name()')), 'mirel');
});

check('bulk load is refused by name', async (session) => {
    await session.batch('create table bulk (id int)');
    const error = await new Promise((resolve) => {
        const load = session.connection.newBulkLoad('bulk', (failed) => resolve(failed));
        load.addColumn('id', TYPES.Int, { nullable: true });
        session.connection.execBulkLoad(load, [{ id: 1 }]);
    });
    assert.match(error.message, /INSERT BULK/i);
    await session.batch('drop table bulk');
    assert.equal(value(await session.batch('select 1')), 1);
});

check('another version of the protocol is served', async (session, target) => {
    for (const tdsVersion of ['7_1', '7_2', '7_3_A', '7_3_B']) {
        const old = await Session.open(target, { tdsVersion });
        const answer = await old.batch("select 1 a, N'\u8336' b, cast(null as int) c");
        assert.deepEqual(rows(answer), [[1, '\u8336', null]], tdsVersion);
        const sent = await old.query('select @p', (request) =>
            request.addParameter('p', TYPES.NVarChar, 'z'.repeat(100)));
        assert.equal(value(sent), 'z'.repeat(100), tdsVersion);
        await old.transaction('begin');
        await old.transaction('rollback');
        await old.close();
    }
});

async function main() {
    const server = await Server.start(process.argv[2]);
    let failed = 0;
    for (const { name, run } of checks) {
        let session;
        try {
            session = await Session.open(server.target);
            await run(session, server.target);
            console.log(`ok      ${name}`);
        } catch (error) {
            ++failed;
            console.log(`FAILED  ${name}\n${error.stack}`);
        }
        if (session) await session.close();
    }
    const status = await server.stop();
    if (status !== 0) {
        ++failed;
        console.log(`FAILED  the server ended with status ${status}`);
    }
    console.log(`${checks.length - failed} of ${checks.length} checks passed`);
    process.exit(failed === 0 ? 0 : 1);
}

main();
