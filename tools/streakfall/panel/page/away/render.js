// Renders a range of frames into the output folder.
import { back } from '../core/connection.js';
import { find } from '../core/dom.js';
import { text } from '../core/language.js';
import { model } from '../core/model.js';
import { tell } from '../core/notice.js';
import { Gone, ask } from '../core/server.js';
import { query } from '../core/session.js';

const pollMs = 250;
let job = null;

function show({ written, total, failed, done, stopped, message }) {
  const bar = find('#render-bar');
  bar.max = total;
  bar.value = written + failed;
  const lines = [text(stopped ? 'stopped' : 'written', { written, total })];
  if (failed > 0) lines.push(text('failed', { failed }));
  if (done && message && (failed > 0 || stopped)) lines.push(message);
  find('#render-told').textContent = lines.join(' ');
}

function setRunning(on) {
  find('#render-start').disabled = on;
  find('#render-stop').disabled = !on;
  for (const field of document.querySelectorAll('#render-range input')) field.disabled = on;
}

// The job may outlast a moment in which the program does not answer.
async function stateOfJob() {
  try {
    return await ask('GET', `jobs/${job}`);
  } catch (error) {
    if (!(error instanceof Gone)) throw error;
    await back();
    return stateOfJob();
  }
}

async function follow() {
  setRunning(true);
  find('#render-progress').hidden = false;
  find('#render-stop').focus();
  for (;;) {
    const state = await stateOfJob();
    show(state);
    if (state.done) break;
    await new Promise((resume) => setTimeout(resume, pollMs));
  }
  setRunning(false);
  find('#render-start').focus();
}

async function start(event) {
  event.preventDefault();
  const first = find('#render-first').valueAsNumber;
  const last = find('#render-last').valueAsNumber;
  try {
    ({ job } = await query('POST', 'render', { first, last }));
    await follow();
  } catch (error) {
    tell(error.message);
    find('#render-told').textContent = error.message;
    setRunning(false);
  }
}

function open() {
  const { output, frames } = model.about;
  find('#render-where').textContent = output
    ? text('renderInto', { folder: `${output.folder}/${output.name}` }) : text('renderNowhere');
  find('#render-range').hidden = !output;
  find('#render-start').hidden = !output;
  find('#render-stop').hidden = !output;
  for (const [field, value] of [['#render-first', model.first], ['#render-last', model.last]]) {
    Object.assign(find(field), { min: frames[0], max: frames[1], value });
  }
  find('#render-dialog').showModal();
}

export function beginRender() {
  setRunning(false);
  find('#render').addEventListener('click', open);
  find('#render-form').addEventListener('submit', start);
  find('#render-stop').addEventListener('click', () => ask('DELETE', `jobs/${job}`));
  // A wheel over a number would change it while the page is scrolled.
  for (const field of document.querySelectorAll('#render-range input')) {
    field.addEventListener('wheel', (event) => event.preventDefault(), { passive: false });
  }
}
