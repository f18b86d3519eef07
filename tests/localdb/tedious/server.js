// quarv-localdb with the sample, on a port and a folder of its own, for the length of a run.
'use strict';

const { spawn } = require('node:child_process');
const fs = require('node:fs');
const os = require('node:os');
const path = require('node:path');

class Server {
    static async start(program) {
        const server = new Server();
        server.folder = fs.mkdtempSync(path.join(os.tmpdir(), 'quarv-tedious-'));
        const secret = path.join(server.folder, 'password');
        fs.writeFileSync(secret, 'right\n', { mode: 0o600 });
        server.process = spawn(program, ['serve', '--data', path.join(server.folder, 'data'),
            '--listen', '127.0.0.1:0', '--login', 'tester', '--password-file', secret, '--sample'],
        { stdio: ['ignore', 'pipe', 'inherit'] });
        server.ended = new Promise((resolve) => server.process.on('exit', resolve));
        const line = await new Promise((resolve, reject) => {
            let text = '';
            server.process.stdout.on('data', (data) => {
                text += data;
                if (text.includes('\n')) resolve(text);
            });
            server.ended.then(() => reject(new Error('the server does not serve')));
        });
        const port = Number(line.trim().split(':').pop());
        server.target = { port, user: 'tester', password: 'right' };
        return server;
    }

    // The exit status.
    async stop() {
        this.process.kill('SIGTERM');
        const status = await this.ended;
        fs.rmSync(this.folder, { recursive: true, force: true });
        return status;
    }
}

module.exports = { Server };
