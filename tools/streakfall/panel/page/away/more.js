// The defaults that new instances open with, in the words of the effect's own dialog, and about.
import { find } from '../core/dom.js';
import { inLanguage, languageChanged, text } from '../core/language.js';
import { model } from '../core/model.js';
import { tell } from '../core/notice.js';
import { query } from '../core/session.js';

const told = { save: 'defaultsSaved', restore: 'defaultsRestored' };

function name() {
  const { about, dialog } = model.about;
  const words = inLanguage(dialog);
  find('#defaults-group').textContent = words.group;
  find('#defaults-save').textContent = words.save;
  find('#defaults-restore').textContent = words.restore;
  find('#about-text').textContent = inLanguage(about);
}

async function store(action) {
  try {
    const { file } = await query('POST', 'defaults', { action });
    find('#defaults-told').textContent = text(told[action], { file });
  } catch (error) {
    tell(error.message);
    find('#defaults-told').textContent = error.message;
  }
}

export function beginMore() {
  find('#more').addEventListener('click', () => {
    find('#defaults-told').textContent = '';
    find('#more-dialog').showModal();
  });
  find('#defaults-save').addEventListener('click', () => store('save'));
  find('#defaults-restore').addEventListener('click', () => store('restore'));
  name();
  languageChanged.on(name);
}
