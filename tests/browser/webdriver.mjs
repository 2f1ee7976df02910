// A browser by WebDriver's protocol, without a library.
import { readFileSync, writeFileSync } from 'node:fs';

const elementKey = 'element-6066-11e4-a52e-4f735466cecf';

export class Browser {
    // driver: the address of chromedriver; folder: an empty one for the browser's own files
    static async start(driver, folder, { scripts = true } = {}) {
        const args = ['--headless', '--no-sandbox', '--disable-gpu', '--disable-quic', '--no-first-run',
            '--disable-background-networking', '--disable-component-update', '--disable-sync',
            '--window-size=1200,900', `--user-data-dir=${folder}`];
        if (!scripts)
            args.push('--blink-settings=scriptEnabled=false');
        const browser = new Browser(driver);
        const session = await browser.#post('/session', { capabilities: { alwaysMatch: {
            browserName: 'chrome', 'goog:chromeOptions': { args }, 'goog:loggingPrefs': { browser: 'ALL' } } } });
        browser.#session = `/session/${session.sessionId}`;
        return browser;
    }

    #driver;
    #session;

    constructor(driver) {
        this.#driver = driver;
    }

    async #request(method, path, body) {
        const reply = await fetch(this.#driver + path, { method, body: body && JSON.stringify(body) });
        const { value } = await reply.json();
        if (!reply.ok)
            throw new Error(`${method} ${path}: ${value.error}: ${value.message}`);
        return value;
    }
    #post(path, body = {}) {
        return this.#request('POST', path, body);
    }

    open(url) {
        return this.#post(`${this.#session}/url`, { url });
    }
    run(script, ...args) {
        return this.#post(`${this.#session}/execute/sync`, { script, args });
    }
    runAsync(script, ...args) {
        return this.#post(`${this.#session}/execute/async`, { script, args });
    }
    command(cmd, params) {
        return this.#post(`${this.#session}/goog/cdp/execute`, { cmd, params });
    }
    title() {
        return this.#request('GET', `${this.#session}/title`);
    }
    url() {
        return this.#request('GET', `${this.#session}/url`);
    }
    async find(css) {
        return (await this.#post(`${this.#session}/element`, { using: 'css selector', value: css }))[elementKey];
    }
    async click(css) {
        return this.#post(`${this.#session}/element/${await this.find(css)}/click`);
    }
    async type(css, text) {
        return this.#post(`${this.#session}/element/${await this.find(css)}/value`, { text });
    }
    async press(text) {
        const actions = [...text].flatMap(value => [{ type: 'keyDown', value }, { type: 'keyUp', value }]);
        return this.#post(`${this.#session}/actions`, { actions: [{ type: 'key', id: 'keys', actions }] });
    }
    // What the browser complained of since the last time.
    complaints() {
        return this.#post(`${this.#session}/se/log`, { type: 'browser' });
    }
    async screenshot(file) {
        writeFileSync(file, Buffer.from(await this.#request('GET', `${this.#session}/screenshot`), 'base64'));
    }
    end() {
        return this.#request('DELETE', this.#session);
    }
}

const axe = readFileSync(process.env.AXE, 'utf8');

// What axe finds wrong with the page, a line each.
export async function violations(browser) {
    await browser.run(`${axe}; window.axe = axe;`);
    const found = await browser.runAsync(
        `const done = arguments[arguments.length - 1];
         axe.run(document, { resultTypes: ['violations'] }).then(result => done(result.violations),
                                                                 error => done([{ id: String(error), nodes: [] }]));`);
    return found.map(each => `${each.id}: ${each.help ?? ''} ${each.nodes.slice(0, 3).map(node => node.html).join(' | ')}`);
}

// The lowest contrast of the drawing's texts with their boxes, and of the ties with the page.
export function drawingContrast(browser) {
    return browser.run(`
        const light = text => {
            const parts = text.match(/[\\d.]+/g).slice(0, 3).map(part => part / 255)
                .map(part => part <= 0.03928 ? part / 12.92 : ((part + 0.055) / 1.055) ** 2.4);
            return 0.2126 * parts[0] + 0.7152 * parts[1] + 0.0722 * parts[2];
        };
        const contrast = (a, b) => { const [x, y] = [light(a), light(b)]; return (Math.max(x, y) + 0.05) / (Math.min(x, y) + 0.05); };
        const paper = getComputedStyle(document.body).backgroundColor;
        const all = { texts: [], ties: [] };
        for (const box of document.querySelectorAll('svg a')) {
            const behind = getComputedStyle(box.querySelector('rect')).fill;
            for (const text of box.querySelectorAll('text'))
                all.texts.push(contrast(getComputedStyle(text).fill, behind));
        }
        for (const tie of document.querySelectorAll('svg .tie'))
            all.ties.push(contrast(getComputedStyle(tie).stroke, paper));
        return { texts: Math.min(...all.texts), ties: Math.min(...all.ties), boxes: all.texts.length, lines: all.ties.length };`);
}
