// Looks as files: save, load by button, load by drop.
import { find, make } from '../core/dom.js';
import { commit } from '../core/history.js';
import { text } from '../core/language.js';
import { tell } from '../core/notice.js';
import { query, wear } from '../core/session.js';

async function save() {
  const { name, text: content } = await query('GET', 'look');
  const url = URL.createObjectURL(new Blob([content], { type: 'application/json' }));
  make('a', { href: url, download: name }).click();
  setTimeout(() => URL.revokeObjectURL(url), 10000);
  tell(text('saved', { name }));
}

async function load(file) {
  try {
    await wear({ name: file.name, text: await file.text() });
  } catch (error) {
    tell(text('noLook', { name: file.name, why: error.message }));
    return;
  }
  await commit();
  tell(text('loaded', { name: file.name }));
}

const holdsFiles = (event) => event.dataTransfer?.types.includes('Files');

function beginDrop() {
  const target = find('#drop');
  let depth = 0; // enter and leave come for every element in between
  const hover = (by) => {
    depth = by === 0 ? 0 : depth + by;
    target.hidden = depth <= 0;
  };
  addEventListener('dragenter', (event) => holdsFiles(event) && hover(1));
  addEventListener('dragleave', (event) => holdsFiles(event) && hover(-1));
  addEventListener('dragover', (event) => holdsFiles(event) && event.preventDefault());
  addEventListener('drop', (event) => {
    if (!holdsFiles(event)) return;
    event.preventDefault();
    hover(0);
    const [file] = event.dataTransfer.files;
    if (file) load(file);
  });
}

export function beginFiles() {
  const chooser = find('#file');
  find('#save').addEventListener('click', save);
  find('#load').addEventListener('click', () => chooser.click());
  chooser.addEventListener('change', () => {
    const [file] = chooser.files;
    if (file) load(file);
    chooser.value = '';
  });
  beginDrop();
}
