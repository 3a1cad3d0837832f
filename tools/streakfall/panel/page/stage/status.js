// What was drawn, and how long it took.
import { find } from '../core/dom.js';
import { languageChanged, text } from '../core/language.js';
import { pictureDrawn } from './pictures.js';

let last = null;

function show() {
  if (!last) return;
  const { width, height, divisor, milliseconds, draft } = last;
  const ms = Math.round(milliseconds);
  find('#status').textContent = text(draft ? 'drawnDraft' : 'drawnFull',
    { width, height, divisor, ms });
}

export function beginStatus() {
  pictureDrawn.on((made) => {
    last = made;
    show();
  });
  languageChanged.on(show);
}
