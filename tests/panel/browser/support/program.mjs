// The built program: the panel's server, and the command line to judge its pictures by.
import { execFile, execFileSync, spawn } from 'node:child_process';
import { mkdtempSync, copyFileSync, rmSync } from 'node:fs';
import { tmpdir } from 'node:os';
import { dirname, join } from 'node:path';
import { fileURLToPath } from 'node:url';
import { promisify } from 'node:util';

export const program = process.env.STREAKFALL_PROGRAM;
const root = join(dirname(fileURLToPath(import.meta.url)), '../../../..');
const picture = join(root, 'docs/demo-picture.png');
const startMs = 20000;

export const frames = 12; // of the input that the tests use
export const size = { width: 480, height: 270 };

/** A folder with a sequence `in.0001.png` and so on, and an empty folder `out`; gone at the end. */
export function makeFolder(context) {
  const folder = mkdtempSync(join(tmpdir(), 'streakfall-panel-'));
  for (let frame = 1; frame <= frames; ++frame) {
    copyFileSync(picture, join(folder, `in.${String(frame).padStart(4, '0')}.png`));
  }
  context.after(() => rmSync(folder, { recursive: true, force: true }));
  return folder;
}

/** What the program prints, as bytes. `folder` also takes its settings file. */
export function run(folder, ...args) {
  return execFileSync(program, args, {
    cwd: folder, maxBuffer: 1 << 28, env: environment(folder), stdio: ['ignore', 'pipe', 'pipe'],
  });
}

// Nothing that the machine's user has stored changes a test, and no test changes it.
function environment(folder, more = {}) {
  const own = { HOME: folder, XDG_CONFIG_HOME: folder, XDG_DATA_HOME: folder, TMPDIR: folder };
  return { ...process.env, ...own, ...more };
}

/** The very pixels, straight RGBA, that `render` makes of a frame. */
export const rendered = (folder, frame, ...args) => run(folder, 'render', '-i', 'in.####.png',
  '-f', String(frame), '-o', '-', '--format', 'rgba', '-q', ...args);

const listing = (args) => ['params', '--json', '--size', `${size.width}x${size.height}`, ...args];

/** `streakfall params --json` with values. */
export const params = (folder, ...args) => JSON.parse(run(folder, ...listing(args)));

/** The same while something else is done. */
export async function paramsLater(folder, ...args) {
  const { stdout } = await promisify(execFile)(program, listing(args),
    { cwd: folder, env: environment(folder), maxBuffer: 1 << 24 });
  return JSON.parse(stdout);
}

/** Starts the panel; resolves with {url, port, process, stop()}. */
export async function startPanel(folder, args = [], more = {}) {
  const child = spawn(program, ['panel', '--no-open', ...args],
    { cwd: folder, env: environment(folder, more), stdio: ['ignore', 'pipe', 'inherit'] });
  const url = await new Promise((found, failed) => {
    let printed = '';
    const late = setTimeout(() => failed(new Error('the panel told no address')), startMs);
    child.on('exit', (code) => failed(new Error(`the panel ended with ${code}: ${printed}`)));
    child.stdout.on('data', (data) => {
      printed += data;
      const [, address] = /^Panel: (\S+)$/m.exec(printed) ?? [];
      if (!address) return;
      clearTimeout(late);
      found(address);
    });
  });
  const stop = (signal = 'SIGINT') => new Promise((ended) => {
    if (child.exitCode !== null || child.signalCode !== null) ended();
    child.on('exit', ended);
    child.kill(signal);
  });
  return { url, port: new URL(url).port, process: child, stop };
}

export const withInput = ['-i', 'in.####.png', '-o', 'out'];
