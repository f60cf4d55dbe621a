// The right column shows the chosen element or the steps; in a narrow window the tabs above do this.
import { Tabs } from './Tabs';
import { useNarrow } from './narrow';
import { useStore } from './store';

export function Sides() {
  const isNarrow = useNarrow();
  if (isNarrow) return null;
  const tabs = [
    { panel: 'details', name: 'Properties' },
    { panel: 'steps', name: <StepsName /> },
  ];
  return <Tabs shape="sides" label="Right column" tabs={tabs} />;
}

export function StepsName() {
  const { steps, program } = useStore();
  const count = steps.list.length;
  return (
    <>
      {program?.isRecording && <span class="recording" title="Recording" />}
      Steps{count > 0 && ` (${count})`}
    </>
  );
}
