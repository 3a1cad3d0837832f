// The words about one control, under the list of controls.
import { find, make } from '../core/dom.js';
import { inLanguage, languageChanged, text } from '../core/language.js';
import { model, stateChanged } from '../core/model.js';

let shown = null;
let shownGreyed = false;

function rangeLine(param, words) {
  if (!param.valid) return words.unit;
  const [least, most] = param.valid;
  return text('range', { unit: words.unit || '—', least, most }).replace(/^—[,、] ?/, '');
}

function show() {
  const place = find('#hint');
  const words = inLanguage(shown?.words);
  if (!words) {
    place.replaceChildren(make('p', { textContent: text('firstHint') }));
    return;
  }
  shownGreyed = model.disabled.has(shown.index);
  const greyed = shownGreyed ? text('greyed') : '';
  const lines = [words.what, words.with, words.hint, greyed].filter(Boolean);
  const head = make('p', { className: 'hint-head' },
    make('strong', { textContent: shown.name.trim() }),
    make('span', { textContent: rangeLine(shown, words) }));
  place.replaceChildren(head, ...lines.map((line) => make('p', { textContent: line })));
}

export function showHint(param) {
  if (shown === param) return;
  shown = param;
  show();
}

export function beginHints() {
  show();
  languageChanged.on(show);
  stateChanged.on(() => shown && model.disabled.has(shown.index) !== shownGreyed && show());
}
