// Tabs as they are used everywhere: one stop for the Tab key, the arrows go from one to the next.
import type { ComponentChildren } from 'preact';
import { useNarrow } from './narrow';
import { store, useStore } from './store';

export interface Tab {
  panel: string;
  name: ComponentChildren;
}

export function Tabs({ tabs, label, shape }: { tabs: Tab[]; label: string; shape: string }) {
  const { panel } = useStore();
  const chosen = tabs.some((one) => one.panel === panel) ? panel : tabs[0]!.panel;
  const onKey = (event: KeyboardEvent) => {
    const by = { ArrowLeft: -1, ArrowRight: 1 }[event.key];
    if (!by) return;
    const at = tabs.findIndex((one) => one.panel === chosen);
    const next = tabs[(at + by + tabs.length) % tabs.length]!.panel;
    store.set({ panel: next });
    document.getElementById(`${shape}-${next}`)?.focus();
  };
  return (
    <div class={shape} role="tablist" aria-label={label} onKeyDown={onKey}>
      {tabs.map(({ panel: id, name }) => (
        <button
          key={id}
          id={`${shape}-${id}`}
          role="tab"
          aria-selected={id === chosen}
          aria-controls={id === chosen ? `panel-${id}` : undefined}
          tabIndex={id === chosen ? 0 : -1}
          onClick={() => store.set({ panel: id })}
        >
          {name}
        </button>
      ))}
    </div>
  );
}

// What a panel says of itself: those of the right column have tabs, and all have in a narrow window.
export function usePanel(id: string, name: string) {
  const hasTab = useNarrow() || id === 'details' || id === 'steps';
  return { id: `panel-${id}`, 'aria-label': name, role: hasTab ? ('tabpanel' as const) : undefined };
}
