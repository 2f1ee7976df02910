// A server of a test's own, whose switch can be steered.
import assert from 'node:assert/strict';
import { spawn, spawnSync } from 'node:child_process';
import { once } from 'node:events';
import { mkdtempSync, rmSync } from 'node:fs';
import { tmpdir } from 'node:os';

const { CMPIHOST, SWITCHSIM } = process.env;

export class Server {
    // Runs until it is ended, however the test ends. scenario: a file; clock: "manual", if it stands still
    static async during({ scenario, clock = '' }, use) {
        const server = new Server();
        try {
            await server.#start(scenario, clock);
            return await use(server);
        } finally {
            await server.end();
            rmSync(server.#folder, { recursive: true });
        }
    }

    address; // http://127.0.0.1:PORT
    #folder = mkdtempSync(`${tmpdir()}/switch-`); // a socket's name must be short
    #environment = { ...process.env, SWITCHSIM_CONTROL: `${this.#folder}/control` };
    #process;

    async #start(scenario, clock) {
        this.#process = spawn(CMPIHOST, ['serve', '--listen', '127.0.0.1:0', '--quiet', '--scenario', scenario],
            { env: { ...this.#environment, SWITCHSIM_CLOCK: clock }, stdio: ['ignore', 'pipe', 'inherit'] });
        this.address = await new Promise((resolve, reject) => {
            let said = '';
            this.#process.stdout.on('data', piece => {
                said += piece;
                const [, address] = said.match(/^listening on (http:\/\/[^/]+)\//m) ?? [];
                if (address)
                    resolve(address);
            });
            setTimeout(() => reject(new Error(`the server does not listen: ${said}`)), 60000).unref();
            this.#process.once('error', reject);
            this.#process.once('exit', () => reject(new Error(`the server ended: ${said}`)));
        });
    }

    signal(name) {
        this.#process.kill(name);
    }

    async end() {
        if (!this.#process?.pid || this.#process.exitCode !== null || this.#process.signalCode !== null)
            return;
        const ended = once(this.#process, 'exit');
        this.#process.kill('SIGCONT');
        this.#process.kill();
        await ended;
    }

    // A command of switchsim.
    steer(...words) {
        const done = spawnSync(SWITCHSIM, words, { env: this.#environment, encoding: 'utf8' });
        assert.equal(done.status, 0, `${words.join(' ')}: ${done.stderr}`);
    }
}
