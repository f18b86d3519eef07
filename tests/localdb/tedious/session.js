// One connection of the client, its calls as promises. A request's answer is a list of results
// ({names, rows}), the errors, the messages, the output values and the return status.
'use strict';

const { Connection, Request } = require('tedious');

const Patience = 30000;

class Session {
    constructor(connection, messages) {
        this.connection = connection;
        this.messages = messages;
    }

    static open(target, options = {}) {
        const messages = [];
        const connection = new Connection({
            server: '127.0.0.1',
            authentication: {
                type: 'default',
                options: { userName: target.user, password: target.password },
            },
            options: {
                port: target.port,
                database: 'mirel',
                encrypt: false,
                trustServerCertificate: true,
                useUTC: true,
                requestTimeout: Patience,
                connectTimeout: Patience,
                ...options,
            },
        });
        connection.on('infoMessage', (info) => messages.push(info));
        return new Promise((resolve, reject) => {
            connection.connect((error) =>
                error ? reject(error) : resolve(new Session(connection, messages)));
        });
    }

    // Runs a request by `start`; `prepare` may add its parameters. Errors are part of the answer.
    ask(sql, start, prepare = () => {}) {
        return new Promise((resolve) => {
            const answer = { results: [], errors: [], outputs: {}, status: undefined };
            const from = this.messages.length;
            const request = new Request(sql, (error, count) => {
                if (error) answer.errors.push(...(error.errors || [error]));
                answer.count = count;
                answer.messages = this.messages.slice(from);
                resolve(answer);
            });
            request.on('columnMetadata', (columns) =>
                answer.results.push({ names: columns.map((c) => c.colName), rows: [] }));
            request.on('row', (row) =>
                answer.results.at(-1).rows.push(row.map((cell) => cell.value)));
            request.on('returnValue', (name, value) => { answer.outputs[name] = value; });
            request.on('doneProc', (count, more, status) => { answer.status = status; });
            prepare(request);
            start(request);
        });
    }

    batch(sql) {
        return this.ask(sql, (request) => this.connection.execSqlBatch(request));
    }
    query(sql, prepare) {
        return this.ask(sql, (request) => this.connection.execSql(request), prepare);
    }
    call(procedure, prepare) {
        return this.ask(procedure, (request) => this.connection.callProcedure(request), prepare);
    }
    // Runs a batch and stops it as soon as it has begun, or after its first row.
    stopped(sql, afterRow) {
        return this.ask(sql, (request) => {
            if (afterRow) request.once('row', () => this.connection.cancel());
            this.connection.execSqlBatch(request);
            if (!afterRow) setImmediate(() => this.connection.cancel());
        });
    }
    // begin, commit, save and roll back as the protocol's own requests.
    transaction(verb, name, isolation) {
        return new Promise((resolve, reject) => {
            const done = (error) => (error ? reject(error) : resolve());
            if (verb === 'begin') this.connection.beginTransaction(done, name, isolation);
            if (verb === 'commit') this.connection.commitTransaction(done, name);
            if (verb === 'save') this.connection.saveTransaction(done, name);
            if (verb === 'rollback') this.connection.rollbackTransaction(done, name);
        });
    }
    reset() {
        return new Promise((resolve, reject) =>
            this.connection.reset((error) => (error ? reject(error) : resolve())));
    }
    close() {
        return new Promise((resolve) => {
            this.connection.on('end', resolve);
            this.connection.close();
        });
    }
}

module.exports = { Session };
