// The bar at the top: undo and redo, the two slots, the language, and the dialogs' close buttons.
import { find } from './core/dom.js';
import { activeSlot, canRedo, canUndo, choose, historyChanged, redo, undo } from './core/history.js';
import { otherLanguage, setLanguage } from './core/language.js';

const slots = ['A', 'B'];

function show() {
  find('#undo').disabled = !canUndo();
  find('#redo').disabled = !canRedo();
  for (const slot of slots) {
    find(`#slot-${slot.toLowerCase()}`).ariaPressed = String(slot === activeSlot());
  }
}

export function beginToolbar() {
  find('#undo').addEventListener('click', undo);
  find('#redo').addEventListener('click', redo);
  for (const slot of slots) {
    find(`#slot-${slot.toLowerCase()}`).addEventListener('click', () => choose(slot));
  }
  find('#language').addEventListener('click', () => {
    setLanguage(otherLanguage());
    find('#language').lang = otherLanguage();
  });
  find('#language').lang = otherLanguage();
  for (const button of document.querySelectorAll('dialog .done')) {
    button.addEventListener('click', () => button.closest('dialog').close());
  }
  historyChanged.on(show);
  show();
}
