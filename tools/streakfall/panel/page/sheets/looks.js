// The looks that ship, drawn over the input; a click takes one.
import { find } from '../core/dom.js';
import { commit } from '../core/history.js';
import { inLanguage, languageChanged } from '../core/language.js';
import { ask } from '../core/server.js';
import { wear } from '../core/session.js';
import { drawTiles, openSheet, tile } from './sheet.js';

let looks = [];
let tiles = [];

function build() {
  tiles = looks.map(({ key }) => tile(async () => {
    await wear({ key });
    await commit();
  }));
  find('#looks-sheet .tiles').replaceChildren(...tiles.map(({ button }) => button));
}

function name() {
  for (const [place, { caption, button }] of tiles.entries()) {
    caption.textContent = inLanguage(looks[place].name) || looks[place].key;
    button.title = inLanguage(looks[place].about);
  }
}

async function open(event) {
  if (!openSheet('#looks-sheet', event.currentTarget)) return;
  if (looks.length === 0) {
    looks = await ask('GET', 'looks');
    build();
    name();
  }
  tiles[0]?.button.focus();
  await drawTiles(find('#looks-sheet'), tiles, (place) => ({ look: looks[place].key }));
}

export function beginLooks() {
  find('#looks').addEventListener('click', open);
  languageChanged.on(name);
}
