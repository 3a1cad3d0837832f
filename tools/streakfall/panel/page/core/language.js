// The language of the page: the browser's at first, then what was chosen. Elements name their
// texts: data-text for the content, data-tip for the tooltip, data-label for the accessible
// name, and of a button also the tooltip.
import { Signal } from './signal.js';
import { texts } from './texts.js';

const memory = 'streakfall-language';
const languages = ['en', 'ja'];

export const languageChanged = new Signal();
export let language = 'en';

function remembered() {
  try {
    return localStorage.getItem(memory);
  } catch {
    return null; // storage may be switched off
  }
}

/** A text of the page; `{name}` in it is replaced by values.name. */
export function text(key, values = {}) {
  return texts[key][language].replace(/\{(\w+)\}/g, (whole, name) => values[name] ?? whole);
}

/** The one of {en, ja} that the page is in. */
export const inLanguage = (both) => both?.[language] ?? '';

/** Fills in the texts of an element's children. */
export function applyTexts(root) {
  for (const element of root.querySelectorAll('[data-text], [data-tip], [data-label]')) {
    const { text: content, tip, label } = element.dataset;
    if (content) element.textContent = text(content);
    if (label) element.ariaLabel = text(label);
    if (tip || (label && element.matches('button'))) element.title = text(tip || label);
  }
}

export function setLanguage(next) {
  language = next;
  document.documentElement.lang = next;
  try {
    localStorage.setItem(memory, next);
  } catch {
    // then it is asked for again the next time
  }
  applyTexts(document.body);
  languageChanged.emit();
}

export function beginLanguage() {
  const browser = navigator.language.toLowerCase().startsWith('ja') ? 'ja' : 'en';
  const first = remembered();
  setLanguage(languages.includes(first) ? first : browser);
}

export const otherLanguage = () => (language === 'en' ? 'ja' : 'en');
