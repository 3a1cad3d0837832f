// The effect's instance behind this page. Changes go to it one at a time, in order; of several
// waiting changes of one parameter only the latest is sent.
import { back } from './connection.js';
import { frameChanged, model, snapshot, stateChanged } from './model.js';
import { tell } from './notice.js';
import { Gone, ask, askPicture } from './server.js';
import { Signal } from './signal.js';

let page = null;
let reopening = null;
let chain = Promise.resolve();
const waiting = new Map(); // index: value
const stamps = []; // times of the input events behind what waits
let flushing = false;
let tasks = 0;
let turn = 0; // counts the pictures asked for

export const busyChanged = new Signal();
export const isBusy = () => tasks > 0;

async function open(state) {
  const answer = await ask('POST', 'pages', { state, frame: model.frame });
  page = answer.page;
  return answer.state;
}

// Goes on after the program was away or has dropped this page.
function reopen() {
  reopening ??= open(snapshot()).finally(() => {
    reopening = null;
  });
  return reopening;
}

async function untilAnswered(request) {
  for (;;) {
    try {
      return await request(`pages/${page}`);
    } catch (error) {
      if (error instanceof Gone) await back();
      else if (error.gonePage) await reopen();
      else throw error;
    }
  }
}

function enqueue(task) {
  tasks += 1;
  busyChanged.emit();
  const done = chain.then(task);
  chain = done
    .catch((error) => tell(error.message))
    .finally(() => {
      tasks -= 1;
      busyChanged.emit();
    });
  return done;
}

// A value that waits to be sent is newer than what an answer says of it.
function take(state, answered = [], redraw = true) {
  model.values = { ...state.values, ...Object.fromEntries(waiting) };
  model.keys = state.keys;
  model.disabled = new Set(state.disabled);
  stateChanged.emit(answered, redraw);
}

async function flush() {
  flushing = false;
  const events = stamps.splice(0);
  let state = null;
  for (const [param, value] of [...waiting]) {
    waiting.delete(param);
    const change = { param, value, frame: model.frame };
    ({ state } = await untilAnswered((at) => ask('POST', `${at}/change`, change)));
  }
  if (state) take(state, events);
}

/** Opens the page's instance, with the values that the program begins with. */
export async function begin() {
  take(await open());
}

/** Resolves when all changes made so far are answered. */
export const settled = () => chain;

/** Changes one value as a person does it; the effect reacts. `stamp`: time of the input event. */
export function change(index, value, stamp) {
  model.values[index] = value;
  if (stamp !== undefined) stamps.push(stamp);
  waiting.set(index, value);
  if (flushing) return chain;
  flushing = true;
  return enqueue(flush);
}

/** Replaces all values and keys, as a project that is opened. */
export function replace(state) {
  return enqueue(async () => {
    const { values, keys } = state;
    const body = { state: { values, keys }, frame: model.frame };
    take((await untilAnswered((at) => ask('PUT', `${at}/state`, body))).state);
  });
}

/** Takes a look: {key} of one that ships, or {name, text} of a file. */
export function wear(look) {
  return enqueue(async () => {
    const body = { ...look, frame: model.frame };
    take((await untilAnswered((at) => ask('POST', `${at}/look`, body))).state);
  });
}

/** Any other request about this page, after the changes made so far. */
export function query(method, path, body) {
  return enqueue(() => untilAnswered((at) => ask(method, `${at}/${path}`, body)));
}

/** A picture of the state as the program has it. Requests may overtake each other; turns tell. */
export function picture(body, signal) {
  return untilAnswered((at) => {
    turn += 1;
    return askPicture(`${at}/picture`, { ...body, turn }, signal);
  });
}

// Keyed values are others at another frame.
frameChanged.on(() => {
  if (Object.keys(model.keys).length === 0) return;
  enqueue(async () => {
    const { frame } = model;
    const { state } = await untilAnswered((at) => ask('GET', `${at}?frame=${frame}`));
    if (frame === model.frame) take(state, [], false); // its picture is on its way
  });
});

addEventListener('pagehide', () => {
  const url = new URL(`api/pages/${page}`, document.baseURI);
  if (page) fetch(url, { method: 'DELETE', keepalive: true }).catch(() => {});
});
