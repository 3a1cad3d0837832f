// The line that makes the very bytes of the picture shown.
import { find } from '../core/dom.js';
import { text } from '../core/language.js';
import { model } from '../core/model.js';
import { query } from '../core/session.js';

async function copy() {
  const { frame } = model;
  const { command } = await query('GET', `command?first=${frame}&last=${frame}`);
  find('#command').value = command;
  const done = await navigator.clipboard.writeText(command).then(() => true, () => false);
  find('#copy-done').textContent = text(done ? 'copied' : 'notCopied');
  find('#copy-dialog').showModal();
  find('#command').select();
}

export function beginCommand() {
  find('#copy').addEventListener('click', copy);
}
